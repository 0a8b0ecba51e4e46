#pragma once

#include <QHash>
#include <QLocale>
#include <QObject>
#include <QString>

class QTranslator;

// The module's interface language and the two directories its settings file
// is derived from. One instance per process (instance()).
//
// setLanguage() installs the chosen language's translator in the
// application. Translators are never entered into the table, so every
// switch installs one more and leaves the earlier ones installed: the
// language chosen last answers first, and a text it does not translate
// falls through to the ones below. Hosts rely on this; keep it.
class UIModuleConfig : public QObject
{
    Q_OBJECT

public:
    static UIModuleConfig *instance();

    void setLanguage(QLocale::Language language);

    QLocale::Language language() const { return language_; }
    // The application directory.
    QString configDir() const { return configDir_; }
    // The application directory + "/cache".
    QString cacheDir() const { return cacheDir_; }

private:
    UIModuleConfig();
    ~UIModuleConfig() override;

    QLocale::Language language_ = QLocale::AnyLanguage;
    QString configDir_;
    QString cacheDir_;
    QHash<QLocale::Language, QTranslator *> translators_;
};
