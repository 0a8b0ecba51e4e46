#include "BexRipEngineDriverUI_RipServer_p.h"

#include "Common/Logging.h"
#include "Config/PrinterDriverConfig.h"
#include "Config/UIModuleConfig.h"
#include "FramelessWidget/Common/CommonFramelessMessageBox.h"
#include "TempPrsFileName.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverManagerDlg.h"
#include "UI/PrinterDriverPropertyDlg.h"
#include "bex/JsonText.h"

#include <IUIPrintParamsHandler.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <unistd.h>
#endif

#include <cwchar>

namespace {

const wchar_t kindString[] = L"BexRipEngine_RipServer";

constexpr unsigned versionMajor = 1;
constexpr unsigned versionMinor = 0;
constexpr unsigned versionPatch = 0;

// Format of the serialized driver object.
constexpr int documentMainVersion = 1;
constexpr int documentSubVersion = 0;
const QString keyMeta = QStringLiteral("meta");
const QString keyType = QStringLiteral("type");
const QString keyMainVersion = QStringLiteral("mainVersion");
const QString keySubVersion = QStringLiteral("subVersion");
const QString keyInfo = QStringLiteral("info");
const QString keyModeId = QStringLiteral("modeId");
const QString keyPrsFilePath = QStringLiteral("prsFilePath");

const QString &kindText()
{
    static const QString text = QString::fromWCharArray(kindString);
    return text;
}

// The serialized driver is written directly, in exactly the bytes that
// QJsonDocument::toJson(QJsonDocument::Compact) gives for the same object:
// building three QJsonObjects and writing them took most of serialize()'s
// time. The fixed "meta" member is written once by QJsonDocument itself.

// "key": for the plain ASCII keys above.
QByteArray jsonKey(const QString &key)
{
    return '"' + key.toLatin1() + "\":";
}

QByteArray metaMember()
{
    QJsonObject meta;
    meta.insert(keyType, kindText());
    meta.insert(keyMainVersion, documentMainVersion);
    meta.insert(keySubVersion, documentSubVersion);
    return jsonKey(keyMeta) + QJsonDocument(meta).toJson(QJsonDocument::Compact);
}

} // namespace

const wchar_t *bexRipEngineKind()
{
    return kindString;
}

bool isBexRipEngineKind(const wchar_t *kind)
{
    return kind != nullptr && std::wcscmp(kind, kindString) == 0;
}

// ---------------------------------------------------------------------------
// Module object

const wchar_t *BexRipEngineDriverUI_RipServer::kind() const
{
    return bexRipEngineKind();
}

void BexRipEngineDriverUI_RipServer::setLanguage(QLocale::Language language)
{
    UIModuleConfig::instance()->setLanguage(language);
}

bool BexRipEngineDriverUI_RipServer::showDriverManagerDlg(QWidget *parent,
                                                          ICallback_DriverManagerDlg *callback)
{
    PrinterDriverManagerDlg dialog(parent);
    // The operator's changes are already in the manager when it closes.
    dialog.exec();
    if (!callback)
        return true;

    PrinterDriverManager *manager = PrinterDriverManager::instance();
    const QString driverId = manager->defaultDriverId();
    QString showName;
    QStringList spotColorSampleNameList;
    if (!driverId.isEmpty()) {
        const PrinterDriverManager::DriverInfoPtr driver = manager->findDriverInfo(driverId);
        if (driver.isNull()) {
            BEX_CRITICAL(lcPlugin) << "findDriverInfo failed! check your code";
            return false;
        }
        showName = driver->showName;
        // Selects the driver in the print-parameter library, so that the
        // spot colours below are this driver's.
        manager->setDefaultDriverId(driverId);
        manager->getDefaultSpotColorSampleNameList(spotColorSampleNameList);
    }
    callback->onFinished(showName, spotColorSampleNameList);
    return true;
}

namespace {

// The default driver's id. Without one the operator may install or choose
// one in the driver manager; when there is still none they are told so and
// the id is empty.
QString jobDriverId(QWidget *parent)
{
    PrinterDriverManager *manager = PrinterDriverManager::instance();
    QString driverId = manager->defaultDriverId();
    if (!driverId.isEmpty())
        return driverId;
    PrinterDriverManagerDlg dialog(parent);
    dialog.exec();
    driverId = manager->defaultDriverId();
    if (driverId.isEmpty()) {
        CommonFramelessMessageBox::warning(parent, QObject::tr("温馨提示"), QObject::tr("请选择默认打印机"),
                                           QObject::tr("确定"), 0, QString(), nullptr, Qt::AlignHCenter);
    }
    return driverId;
}

// The job keeps its own copy of the driver's description, so that later
// edits of the driver do not change a job already prepared. The copy's
// path, or an empty text when it could not be made.
QString copyPrsForJob(const QString &prsPath)
{
    const QString tempPrsFilePath = makeTempPrsFilePath(PrinterDriverConfig::instance()->dtpBinDir());
    if (!QFile::copy(prsPath, tempPrsFilePath)) {
        BEX_CRITICAL(lcPlugin) << "copy file failed";
        return QString();
    }
    // The copy keeps the permissions of the driver's file; a read-only one
    // (FILE_ATTRIBUTE_READONLY on Windows) would make removePrsFile() fail.
    QFile::setPermissions(tempPrsFilePath, QFile::permissions(tempPrsFilePath) | QFileDevice::WriteOwner |
                                               QFileDevice::WriteUser);
    return tempPrsFilePath;
}

} // namespace

bool BexRipEngineDriverUI_RipServer::showDriverPropertyDlg(QWidget *parent, const RipExtraOption &option,
                                                           ICallback_DriverPropertyDlg *callback)
{
    const QString driverId = jobDriverId(parent);
    if (driverId.isEmpty())
        return false;
    PrinterDriverManager *manager = PrinterDriverManager::instance();
    const PrinterDriverManager::DriverInfoPtr driver = manager->findDriverInfo(driverId);
    if (driver.isNull()) {
        BEX_CRITICAL(lcPlugin) << "findDriverInfo failed! check your code";
        return false;
    }

    RipExtraOption jobOption = option;
    if (PrinterDriverConfig::instance()->bPromptDriverPropertyDlg()) {
        PrinterDriverPropertyDlg dialog(driverId, parent);
        dialog.setExtraOption(option);
        if (dialog.exec() == QDialog::Rejected)
            return false;
        jobOption = dialog.extraOption();
    }
    if (!callback)
        return true;

    // The property dialog or the manager may have selected another driver
    // in the library since; everything below reads the job's driver.
    manager->setDefaultDriverId(driverId);
    quint32 dpiX = 0;
    quint32 dpiY = 0;
    if (!manager->getDefaultDriverDpi(dpiX, dpiY)) {
        BEX_CRITICAL(lcPlugin) << "getDefaultDriverDpi failed";
        return false;
    }
    const QString tempPrsFilePath = copyPrsForJob(driver->prsPath);
    if (tempPrsFilePath.isEmpty())
        return false;

    IUIPrintParamsHandler *handler = manager->getHandler();
    auto info = QSharedPointer<DriverInfo_RipServer>::create();
    info->prsFilePath = tempPrsFilePath;
    info->showName = driver->showName;
    info->dpiX = dpiX;
    info->dpiY = dpiY;
    info->modeId = handler ? handler->GetCurModeId() : info->modeId;
    manager->getDefaultSpotColorSampleNameList(info->spotColorSampleNameList);
    callback->onFinished(jobOption, info);
    return true;
}

QSharedPointer<IRipEngine::IDriver>
BexRipEngineDriverUI_RipServer::getRipEngineDriver(const QSharedPointer<DriverInfo> &info)
{
    if (info.isNull())
        return {};
    if (!isBexRipEngineKind(info->kind())) {
        BEX_CRITICAL(lcPlugin) << "kind is different! check your code";
        return {};
    }
    auto driver = QSharedPointer<BexRipEngineDriver_RipServer>::create();
    driver->prsFilePath = info->prsFilePath.toStdWString();
    driver->modeId = info->modeId;
    return driver;
}

QByteArray BexRipEngineDriverUI_RipServer::serialize(const QSharedPointer<IRipEngine::IDriver> &driver)
{
    if (driver.isNull())
        return {};
    if (!isBexRipEngineKind(driver->kind())) {
        BEX_CRITICAL(lcPlugin) << "kind is different! check your code";
        return {};
    }
    // The kind check above makes the downcast safe.
    const auto *ours = static_cast<const BexRipEngineDriver_RipServer *>(driver.data());

    // {"info":{"modeId":<n>,"prsFilePath":<path>},"meta":{...}}: keys in the
    // sorted order QJsonObject keeps them.
    static const QByteArray infoHead = '{' + jsonKey(keyInfo) + '{' + jsonKey(keyModeId);
    static const QByteArray pathKey = ',' + jsonKey(keyPrsFilePath);
    static const QByteArray tail = "}," + metaMember() + '}';
    QByteArray document;
    document.reserve(infoHead.size() + pathKey.size() + tail.size() + 16 + int(ours->prsFilePath.size()) * 3);
    document += infoHead;
    document += QByteArray::number(ours->modeId);
    document += pathKey;
    bex::appendJsonString(document, QString::fromStdWString(ours->prsFilePath));
    document += tail;
    return document;
}

QSharedPointer<IRipEngine::IDriver> BexRipEngineDriverUI_RipServer::unserialize(const QByteArray &data)
{
    if (data.isEmpty())
        return {};

    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(data, &error);
    if (error.error != QJsonParseError::NoError) {
        BEX_CRITICAL(lcPlugin) << "解析错误 - 原因:" << static_cast<int>(error.error);
        return {};
    }
    if (document.isEmpty()) {
        BEX_CRITICAL(lcPlugin) << "解析的json为空";
        return {};
    }

    // An array at top level reads as an empty object here, so it is refused
    // below as a type mismatch.
    const QJsonObject root = document.object();
    const QJsonObject meta = root.value(keyMeta).toObject();
    const QString type = meta.value(keyType).toString();
    const int mainVersion = meta.value(keyMainVersion).toInt(0);
    const int subVersion = meta.value(keySubVersion).toInt(0);
    BEX_DEBUG(lcPlugin) << "metaType:" << type << "mainVersion:" << mainVersion
                        << "subVersion:" << subVersion;

    if (type != kindText()) {
        BEX_CRITICAL(lcPlugin) << "类型不匹配";
        return {};
    }
    if (mainVersion != documentMainVersion || subVersion != documentSubVersion) {
        BEX_WARNING(lcPlugin) << "版本不匹配";
        return {};
    }

    const QJsonObject info = root.value(keyInfo).toObject();
    const QString prsFilePath = info.value(keyPrsFilePath).toString();
    // The path ends up in a C string when removePrsFile() deletes it: a NUL
    // inside would cut it short and make it name another file.
    if (prsFilePath.contains(QChar(0))) {
        BEX_WARNING(lcPlugin) << "路径含有空字符";
        return {};
    }

    auto driver = QSharedPointer<BexRipEngineDriver_RipServer>::create();
    driver->modeId = info.value(keyModeId).toInt(0);
    driver->prsFilePath = prsFilePath.toStdWString();
    return driver;
}

// ---------------------------------------------------------------------------
// Objects handed to the host

const wchar_t *DriverInfo_RipServer::kind() const
{
    return bexRipEngineKind();
}

const wchar_t *BexRipEngineDriver_RipServer::kind() const
{
    return bexRipEngineKind();
}

std::int32_t BexRipEngineDriver_RipServer::removePrsFile()
{
#ifdef Q_OS_WIN
    return ::DeleteFileW(prsFilePath.c_str()) ? 1 : 0;
#else
    const QByteArray path = QFile::encodeName(QString::fromStdWString(prsFilePath));
    return ::unlink(path.constData()) == 0 ? 1 : 0;
#endif
}

// ---------------------------------------------------------------------------
// Exports

extern "C" {

IRipEngineDriverUI *CreateBexRipEngineDriverUI_RipServer()
{
    return new BexRipEngineDriverUI_RipServer;
}

void DestroyBexRipEngineDriverUI_RipServer(IRipEngineDriverUI *ui)
{
    delete ui;
}

bool BexRipEngineDriverUI_RipServer_Initialize()
{
    return PrinterDriverManager::instance()->load();
}

const wchar_t *BexRipEngineDriverUI_RipServer_Kind()
{
    return bexRipEngineKind();
}

void BexRipEngineDriverUI_RipServer_UnInitialize()
{
    PrinterDriverManager::instance()->unload();
}

void BexRipEngineDriverUI_RipServer_Version(unsigned int *major, unsigned int *minor, unsigned int *patch)
{
    if (major)
        *major = versionMajor;
    if (minor)
        *minor = versionMinor;
    if (patch)
        *patch = versionPatch;
}

} // extern "C"
