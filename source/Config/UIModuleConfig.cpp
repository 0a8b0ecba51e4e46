#include "Config/UIModuleConfig.h"

#include "Common/Logging.h"

#include <QCoreApplication>
#include <QTranslator>

namespace {
const QString chineseTranslation = QStringLiteral(":/BexRipEngineDriverUI_RipServer/language/Chinese.qm");
const QString englishTranslation = QStringLiteral(":/BexRipEngineDriverUI_RipServer/language/English.qm");
} // namespace

UIModuleConfig *UIModuleConfig::instance()
{
    static UIModuleConfig config;
    return &config;
}

UIModuleConfig::UIModuleConfig()
    : configDir_(QCoreApplication::applicationDirPath())
    , cacheDir_(QCoreApplication::applicationDirPath() + QStringLiteral("/cache"))
{}

UIModuleConfig::~UIModuleConfig() = default;

void UIModuleConfig::setLanguage(QLocale::Language language)
{
    if (language == language_)
        return;

    const auto current = translators_.find(language_);
    if (current != translators_.end()) {
        QTranslator *old = current.value();
        QCoreApplication::removeTranslator(old);
        translators_.erase(current);
        delete old;
    }

    language_ = language;

    QTranslator *translator = translators_.value(language, nullptr);
    if (!translator) {
        translator = new QTranslator(this);
        bool loaded = false;
        if (language == QLocale::Chinese) {
            BEX_DEBUG(lcConfig) << "中文";
            loaded = translator->load(chineseTranslation);
        } else if (language == QLocale::English) {
            BEX_DEBUG(lcConfig) << "英文";
            loaded = translator->load(englishTranslation);
        }
        if (!loaded) {
            delete translator;
            BEX_WARNING(lcConfig) << "语言文件加载失败";
            return;
        }
    }

    if (!QCoreApplication::installTranslator(translator))
        BEX_CRITICAL(lcConfig) << "语言文件安装失败";
}
