// The driver UI service seen from a host: the built module loaded at run time
// with QLibrary, nothing of it linked in, the open print-parameter library
// with the sample drivers, and every dialog the module opens driven by
// clicks. One host session from Initialize to UnInitialize.

#include "IRipEngineDriverUI.h"
#include "IUIPrintParamsHandler.h"

#include "LogCapture.h"
#include "SampleDriverFiles.h"
#include "TestAppDir.h"
#include "UserScript.h"

#include <QCheckBox>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLibrary>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QThread>
#include <QtTest>

#include <cstdio>
#include <optional>

namespace {

const QString managerDlg = QStringLiteral("PrinterDriverManagerDlg");
const QString propertyDlg = QStringLiteral("PrinterDriverPropertyDlg");
const QString moduleSource = QStringLiteral("source/BexRipEngineDriverUI_RipServer_p");
const QString uv2513 = QStringLiteral("BexUV2513_CMYKWV");
const QString uv3220 = QStringLiteral("BexUV3220_8C");
constexpr int idRole = Qt::UserRole + 1;

struct ManagerCallback : IRipEngineDriverUI::ICallback_DriverManagerDlg
{
    int calls = 0;
    QString showName;
    QStringList spotColors;
    bool onFinished(const QString &name, const QStringList &spotColorSampleNameList) override
    {
        ++calls;
        showName = name;
        spotColors = spotColorSampleNameList;
        return true;
    }
};

struct PropertyCallback : IRipEngineDriverUI::ICallback_DriverPropertyDlg
{
    int calls = 0;
    RipExtraOption option;
    QSharedPointer<IRipEngineDriverUI::DriverInfo> info;
    bool onFinished(const RipExtraOption &jobOption,
                    const QSharedPointer<IRipEngineDriverUI::DriverInfo> &driver) override
    {
        ++calls;
        option = jobOption;
        info = driver;
        return true;
    }
};

const wchar_t foreignKind[] = L"OtherRipEngine";

struct ForeignDriverInfo : IRipEngineDriverUI::DriverInfo
{
    const wchar_t *kind() const override { return foreignKind; }
};

// The folder where the module puts the jobs' temporary .prs copies.
QString tempFolder()
{
    return TestAppDir::path() + QStringLiteral("/dtp/bin/");
}

QStringList tempFiles()
{
    return QDir(tempFolder()).entryList({QStringLiteral("*.temp.prs")}, QDir::Files, QDir::Name);
}

// The three numbers of a temporary name: milliseconds, process id, sequence.
struct TempName
{
    qint64 msecs = -1;
    qint64 pid = -1;
    qint64 sequence = -1;
};

std::optional<TempName> parseTempName(const QString &path)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d+)_(\\d+)_(\\d+)\\.temp\\.prs$"));
    const QRegularExpressionMatch match = pattern.match(QFileInfo(path).fileName());
    if (!match.hasMatch())
        return std::nullopt;
    return TempName{match.captured(1).toLongLong(), match.captured(2).toLongLong(),
                    match.captured(3).toLongLong()};
}

// Clicks the row of the manager's list that stands for driverId.
void clickDriverRow(UserScript &script, QWidget *dialog, const QString &driverId)
{
    auto *list = dialog->findChild<QListWidget *>(QStringLiteral("listWidget_"));
    if (!list) {
        script.problem(QStringLiteral("the manager shows no list"));
        return;
    }
    for (int row = 0; row < list->count(); ++row) {
        QListWidgetItem *item = list->item(row);
        if (item->data(idRole).toString() != driverId)
            continue;
        list->scrollToItem(item);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualItemRect(item).center());
        if (list->currentItem() != item)
            script.problem(QStringLiteral("the row of %1 did not take the click").arg(driverId));
        return;
    }
    script.problem(QStringLiteral("no row for ") + driverId);
}

} // namespace

class DriverUiServiceTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void manager_nullCallback_returnsTrueWithoutDefaultDriver();
    void manager_withoutDefaultDriver_callsBackWithNothing();
    void propertyStep_withoutDefaultDriver_warnsAndFails();
    void manager_callsBackWithTheDefaultDriverChosenThere();
    void propertyStep_dialogRejected_failsAndCopiesNothing();
    void propertyStep_accepted_handsOutACopyOfTheDriver();
    void propertyStep_nullCallback_succeedsAndCopiesNothing();
    void propertyStep_promptSwitchedOff_showsNoDialogAndKeepsTheOption();
    void propertyStep_twoQuickCalls_getCopiesThatDifferInTheSequence();
    void propertyStep_readOnlyDriverFile_givesARemovableCopy();
    void propertyStep_temporaryPathTaken_failsTheCopy();
    void getRipEngineDriver_ofNull_isNull();
    void getRipEngineDriver_refusesAnotherModulesKind();

private:
    // Installs two sample drivers with the library itself, as an earlier
    // session would have left them; returns false on failure.
    bool installSamples();
    template <typename Fn>
    Fn resolve(const char *name)
    {
        return reinterpret_cast<Fn>(module_.resolve(name));
    }
    // Deletes a job's temporary copy the way a host does, through the engine's
    // driver object.
    int removeCopy(const QSharedPointer<IRipEngineDriverUI::DriverInfo> &info)
    {
        const QSharedPointer<IRipEngine::IDriver> driver = ui_->getRipEngineDriver(info);
        return driver ? driver->removePrsFile() : -1;
    }
    // Runs the property step with the script playing the operator.
    bool propertyStep(UserScript &script, const RipExtraOption &option, PropertyCallback *callback);

    QLibrary module_{QStringLiteral(BEX_MODULE_PATH)};
    BexRipEngineDriverUI_RipServer_UnInitializeFn unInitialize_ = nullptr;
    DestroyBexRipEngineDriverUI_RipServerFn destroy_ = nullptr;
    IRipEngineDriverUI *ui_ = nullptr;
    QHash<QString, QString> ids_;       // sample base name -> driver id
    QHash<QString, QString> showNames_; // sample base name -> shown name
    QHash<QString, QString> prsPaths_;  // sample base name -> installed .prs file
    // The sequence number of the last temporary name the module made.
    qint64 lastSequence_ = -1;
};

bool DriverUiServiceTest::installSamples()
{
    IUIPrintParamsHandler *handler = CreateUIPrintParamsHandler();
    if (!handler)
        return false;
    bool ok = true;
    for (const QString &sample : {uv2513, uv3220}) {
        const printerInfoItem *item =
            handler->AddPrinterDriverPrs(SampleDriverFiles::prsPath(sample).toLocal8Bit().constData(), 0);
        if (!item) {
            ok = false;
            break;
        }
        ids_.insert(sample, QString::fromLocal8Bit(item->piiId));
        showNames_.insert(sample, QString::fromLocal8Bit(item->piiShowName));
        prsPaths_.insert(sample, QString::fromLocal8Bit(item->piiPrs));
    }
    DestroyUIPrintParamsHandler(handler);
    return ok;
}

void DriverUiServiceTest::initTestCase()
{
    // A fresh application directory: sample files, no installed driver, no
    // settings.
    QVERIFY(SampleDriverFiles::restage());
    QVERIFY(TestAppDir::remove(QStringLiteral("PrinterDriverConfig.ini")));
    QVERIFY(installSamples());

    QVERIFY2(module_.load(), qPrintable(module_.errorString()));
    const auto initialize =
        resolve<BexRipEngineDriverUI_RipServer_InitializeFn>("BexRipEngineDriverUI_RipServer_Initialize");
    unInitialize_ =
        resolve<BexRipEngineDriverUI_RipServer_UnInitializeFn>("BexRipEngineDriverUI_RipServer_UnInitialize");
    const auto create =
        resolve<CreateBexRipEngineDriverUI_RipServerFn>("CreateBexRipEngineDriverUI_RipServer");
    destroy_ = resolve<DestroyBexRipEngineDriverUI_RipServerFn>("DestroyBexRipEngineDriverUI_RipServer");
    QVERIFY(initialize && unInitialize_ && create && destroy_);
    QVERIFY(initialize());
    ui_ = create();
    QVERIFY(ui_);
}

void DriverUiServiceTest::cleanupTestCase()
{
    if (ui_)
        destroy_(ui_);
    if (unInitialize_)
        unInitialize_();
}

bool DriverUiServiceTest::propertyStep(UserScript &script, const RipExtraOption &option,
                                       PropertyCallback *callback)
{
    bool result = false;
    script.run([&]() { result = ui_->showDriverPropertyDlg(nullptr, option, callback); });
    if (callback && callback->info) {
        const auto name = parseTempName(callback->info->prsFilePath);
        if (name)
            lastSequence_ = name->sequence;
    }
    return result;
}

void DriverUiServiceTest::manager_nullCallback_returnsTrueWithoutDefaultDriver()
{
    UserScript script;
    script.click(managerDlg, QStringLiteral("btn_quit_"));
    bool result = false;
    script.run([&]() { result = ui_->showDriverManagerDlg(nullptr, nullptr); });
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QVERIFY(result);
}

void DriverUiServiceTest::manager_withoutDefaultDriver_callsBackWithNothing()
{
    UserScript script;
    script.click(managerDlg, QStringLiteral("btn_quit_"));
    ManagerCallback callback;
    callback.showName = QStringLiteral("not called");
    bool result = false;
    script.run([&]() { result = ui_->showDriverManagerDlg(nullptr, &callback); });
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QVERIFY(result);
    QCOMPARE(callback.calls, 1);
    QCOMPARE(callback.showName, QString());
    QCOMPARE(callback.spotColors, QStringList());
}

void DriverUiServiceTest::propertyStep_withoutDefaultDriver_warnsAndFails()
{
    // The manager opens first; the operator leaves it without choosing.
    UserScript script;
    script.click(managerDlg, QStringLiteral("btn_quit_"));
    // The warning's one button sits in the middle of its row.
    int leftGap = -1;
    int rightGap = -1;
    script.then(
        QStringLiteral("message box: look at its button"), &UserScript::isMessageBox, [&](QWidget *box) {
            const auto buttons = box->findChildren<QPushButton *>(QStringLiteral("framelessMessageBox_btn"));
            if (buttons.size() != 1)
                return;
            const QRect button(buttons.first()->mapTo(box, QPoint(0, 0)), buttons.first()->size());
            leftGap = button.left();
            rightGap = box->width() - 1 - button.right();
        });
    script.answerMessageBox(QStringLiteral("确定"));
    PropertyCallback callback;
    QVERIFY(!propertyStep(script, RipExtraOption{1, true}, &callback));
    QVERIFY2(leftGap >= 0 && qAbs(leftGap - rightGap) <= 1,
             qPrintable(QStringLiteral("gaps %1 and %2").arg(leftGap).arg(rightGap)));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QCOMPARE(callback.calls, 0);
    QCOMPARE(script.messageBoxes().size(), 1);
    const UserScript::MessageBoxSeen &box = script.messageBoxes().first();
    QCOMPARE(box.title, QStringLiteral("温馨提示"));
    QCOMPARE(box.text, QStringLiteral("请选择默认打印机"));
    QCOMPARE(box.buttons, QStringList{QStringLiteral("确定")});
    QCOMPARE(box.defaultButton, 0);
    QCOMPARE(box.icon, QStringLiteral("warning"));
    QVERIFY(tempFiles().isEmpty());
}

void DriverUiServiceTest::manager_callsBackWithTheDefaultDriverChosenThere()
{
    UserScript script;
    script.inspect(managerDlg, [&](QWidget *dialog) {
        clickDriverRow(script, dialog, ids_.value(uv2513));
        script.clickButton(dialog, QStringLiteral("btn_setDefaultPrinterDriver_"));
        script.clickButton(dialog, QStringLiteral("btn_quit_"));
    });
    ManagerCallback callback;
    bool result = false;
    script.run([&]() { result = ui_->showDriverManagerDlg(nullptr, &callback); });
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QVERIFY(result);
    QCOMPARE(callback.calls, 1);
    QCOMPARE(callback.showName, showNames_.value(uv2513));
    // The sample's channels are C, M, Y, K, White and Varnish.
    QCOMPARE(callback.spotColors, (QStringList{QStringLiteral("White"), QStringLiteral("Varnish")}));
}

void DriverUiServiceTest::propertyStep_dialogRejected_failsAndCopiesNothing()
{
    UserScript script;
    script.click(propertyDlg, QStringLiteral("btn_cancel_"));
    PropertyCallback callback;
    LogCapture log;
    QVERIFY(!propertyStep(script, RipExtraOption{2, false}, &callback));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QCOMPARE(callback.calls, 0);
    QVERIFY(tempFiles().isEmpty());
    // A rejected dialog is the operator's choice, not a failure to log.
    for (const LogCapture::Entry &entry : log.entries())
        QVERIFY2(entry.file != moduleSource || entry.type == QtDebugMsg, qPrintable(entry.message));
}

void DriverUiServiceTest::propertyStep_accepted_handsOutACopyOfTheDriver()
{
    UserScript script;
    bool shownAsGiven = false;
    script.inspect(propertyDlg, [&](QWidget *dialog) {
        // The extra-option section shows the host's option; the operator
        // changes it to automatic printing without mirror.
        auto *whileRip = dialog->findChild<QRadioButton *>(QStringLiteral("radioButton_printWhileRIP_"));
        auto *automatic =
            dialog->findChild<QRadioButton *>(QStringLiteral("radioButton_automatedPrintAfterRIP_"));
        auto *mirror = dialog->findChild<QCheckBox *>(QStringLiteral("checkBox_horMirror_"));
        if (!whileRip || !automatic || !mirror) {
            script.problem(QStringLiteral("the extra-option section is missing"));
            return;
        }
        shownAsGiven = whileRip->isChecked() && mirror->isChecked();
        QTest::mouseClick(automatic, Qt::LeftButton);
        QTest::mouseClick(mirror, Qt::LeftButton);
        script.clickButton(dialog, QStringLiteral("btn_ok_"));
    });
    PropertyCallback callback;
    QVERIFY(propertyStep(script, RipExtraOption{2, true}, &callback));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QVERIFY(shownAsGiven);
    QCOMPARE(callback.calls, 1);
    QCOMPARE(callback.option.printMode, 1);
    QCOMPARE(callback.option.horizontalMirror, false);

    const QSharedPointer<IRipEngineDriverUI::DriverInfo> info = callback.info;
    QVERIFY(info);
    QCOMPARE(QString::fromWCharArray(info->kind()), QStringLiteral("BexRipEngine_RipServer"));
    // A byte-for-byte copy of the driver's .prs file (as OK committed it),
    // named with forward slashes under dtp/bin/.
    QVERIFY2(!info->prsFilePath.contains(QLatin1Char('\\')), qPrintable(info->prsFilePath));
    QVERIFY2(info->prsFilePath.startsWith(tempFolder()), qPrintable(info->prsFilePath));
    const auto name = parseTempName(info->prsFilePath);
    QVERIFY2(name, qPrintable(info->prsFilePath));
    QCOMPARE(name->pid, QCoreApplication::applicationPid());
    QCOMPARE(name->sequence, qint64(0));
    QCOMPARE(tempFiles(), QStringList{QFileInfo(info->prsFilePath).fileName()});
    QFile copy(info->prsFilePath);
    QFile original(prsPaths_.value(uv2513));
    QVERIFY(copy.open(QIODevice::ReadOnly) && original.open(QIODevice::ReadOnly));
    const QByteArray copied = copy.readAll();
    QVERIFY(!copied.isEmpty());
    QCOMPARE(copied, original.readAll());
    copy.close();

    QCOMPARE(info->showName, showNames_.value(uv2513));
    QVERIFY(info->dpiX > 0 && info->dpiY > 0);
    // The sample driver's mode id.
    QCOMPARE(info->modeId, 1);
    QCOMPARE(info->spotColorSampleNameList,
             (QStringList{QStringLiteral("White"), QStringLiteral("Varnish")}));
    QCOMPARE(info->remark, QString());

    // The engine's driver object, kept through serialize() and unserialize().
    const QSharedPointer<IRipEngine::IDriver> driver = ui_->getRipEngineDriver(info);
    QVERIFY(driver);
    QCOMPARE(driver->kind(), info->kind());
    const QByteArray bytes = ui_->serialize(driver);
    QVERIFY(bytes.contains(info->prsFilePath.toUtf8()));
    const QSharedPointer<IRipEngine::IDriver> restored = ui_->unserialize(bytes);
    QVERIFY(restored);
    QCOMPARE(ui_->serialize(restored), bytes);

    // The host deletes the copy when the job is done; once only.
    QCOMPARE(restored->removePrsFile(), 1);
    QVERIFY(!QFile::exists(info->prsFilePath));
    QCOMPARE(driver->removePrsFile(), 0);
    QVERIFY(QFile::exists(prsPaths_.value(uv2513)));
}

void DriverUiServiceTest::propertyStep_nullCallback_succeedsAndCopiesNothing()
{
    UserScript script;
    script.click(propertyDlg, QStringLiteral("btn_ok_"));
    bool result = false;
    script.run([&]() { result = ui_->showDriverPropertyDlg(nullptr, RipExtraOption{}, nullptr); });
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QVERIFY(result);
    QVERIFY(tempFiles().isEmpty());
}

void DriverUiServiceTest::propertyStep_promptSwitchedOff_showsNoDialogAndKeepsTheOption()
{
    // The operator switches the prompt off in the dialog itself.
    UserScript script;
    script.inspect(propertyDlg, [&](QWidget *dialog) {
        auto *noPrompt =
            dialog->findChild<QCheckBox *>(QStringLiteral("checkBox_notPromptDriverPropertyDlg_"));
        if (!noPrompt) {
            script.problem(QStringLiteral("no check box to switch the prompt off"));
            return;
        }
        QTest::mouseClick(noPrompt, Qt::LeftButton);
        script.clickButton(dialog, QStringLiteral("btn_ok_"));
    });
    PropertyCallback first;
    QVERIFY(propertyStep(script, RipExtraOption{0, false}, &first));
    QVERIFY2(script.problems().isEmpty(), qPrintable(script.problems().join(QLatin1Char('\n'))));
    QCOMPARE(first.calls, 1);
    QCOMPARE(removeCopy(first.info), 1);

    // No window comes now: a script without steps reports any that does.
    UserScript noWindow;
    PropertyCallback callback;
    QVERIFY(propertyStep(noWindow, RipExtraOption{1, true}, &callback));
    QVERIFY2(noWindow.problems().isEmpty(), qPrintable(noWindow.problems().join(QLatin1Char('\n'))));
    QCOMPARE(callback.calls, 1);
    QCOMPARE(callback.option.printMode, 1);
    QCOMPARE(callback.option.horizontalMirror, true);
    QVERIFY(callback.info);
    QCOMPARE(removeCopy(callback.info), 1);
}

void DriverUiServiceTest::propertyStep_twoQuickCalls_getCopiesThatDifferInTheSequence()
{
    // With the prompt off nothing waits between the two calls; should they
    // fall in one millisecond, the sequence number still tells them apart.
    UserScript noWindow;
    PropertyCallback first;
    PropertyCallback second;
    noWindow.run([&]() {
        QVERIFY(ui_->showDriverPropertyDlg(nullptr, RipExtraOption{}, &first));
        QVERIFY(ui_->showDriverPropertyDlg(nullptr, RipExtraOption{}, &second));
    });
    QVERIFY2(noWindow.problems().isEmpty(), qPrintable(noWindow.problems().join(QLatin1Char('\n'))));
    QVERIFY(first.info && second.info);
    const auto a = parseTempName(first.info->prsFilePath);
    const auto b = parseTempName(second.info->prsFilePath);
    QVERIFY(a && b);
    lastSequence_ = b->sequence;
    QVERIFY(first.info->prsFilePath != second.info->prsFilePath);
    QCOMPARE(b->sequence, a->sequence + 1);
    QCOMPARE(a->pid, b->pid);
    QVERIFY(b->msecs >= a->msecs);
    QCOMPARE(removeCopy(first.info), 1);
    QCOMPARE(removeCopy(second.info), 1);
}

void DriverUiServiceTest::propertyStep_readOnlyDriverFile_givesARemovableCopy()
{
    // The driver's .prs file is read-only. A copy keeps its permissions
    // (on Windows its read-only attribute, which stops DeleteFile), yet the
    // host must be able to delete the job's copy.
    const QString prs = prsPaths_.value(uv2513);
    const QFileDevice::Permissions writable = QFile::permissions(prs);
    const QFileDevice::Permissions readOnly =
        QFileDevice::ReadOwner | QFileDevice::ReadUser | QFileDevice::ReadGroup | QFileDevice::ReadOther;
    QVERIFY(QFile::setPermissions(prs, readOnly));
    const auto restore = qScopeGuard([&]() { QFile::setPermissions(prs, writable); });
    QVERIFY(!(QFile::permissions(prs) & QFileDevice::WriteOwner));

    UserScript noWindow;
    PropertyCallback callback;
    QVERIFY(propertyStep(noWindow, RipExtraOption{}, &callback));
    QVERIFY2(noWindow.problems().isEmpty(), qPrintable(noWindow.problems().join(QLatin1Char('\n'))));
    QVERIFY(callback.info);
    const QString copy = callback.info->prsFilePath;
    QFile copied(copy);
    QFile original(prs);
    QVERIFY(copied.open(QIODevice::ReadOnly) && original.open(QIODevice::ReadOnly));
    QCOMPARE(copied.readAll(), original.readAll());
    copied.close();
    QVERIFY2(QFile::permissions(copy) & QFileDevice::WriteOwner, qPrintable(copy));

    QCOMPARE(removeCopy(callback.info), 1);
    QVERIFY(!QFile::exists(copy));
    QVERIFY(tempFiles().isEmpty());
    QVERIFY(QFile::exists(prs));
}

void DriverUiServiceTest::propertyStep_temporaryPathTaken_failsTheCopy()
{
    // Files stand at every name the next call can make while it runs: one
    // per millisecond of a window of three seconds. Making a file can take
    // longer than a millisecond (under Wine it takes a few, and more as the
    // folder fills, since every new name is looked up ignoring case), so
    // the window starts far enough ahead for all of them to be made before
    // the clock gets there, and the call waits for its start.
    const qint64 sequence = lastSequence_ + 1;
    const QByteArray kept("a file that is not the module's");
    const auto clock = []() { return QDateTime::currentDateTimeUtc().toMSecsSinceEpoch(); };
    const auto makeFile = [&](const QString &path) {
        std::FILE *file = std::fopen(QFile::encodeName(path).constData(), "wb");
        if (!file)
            return false;
        const bool written = std::fwrite(kept.constData(), 1, kept.size(), file) == std::size_t(kept.size());
        return std::fclose(file) == 0 && written;
    };
    constexpr qint64 window = 3000;
    constexpr int probes = 200;
    QElapsedTimer probeTime;
    probeTime.start();
    for (int i = 0; i < probes; ++i)
        QVERIFY(makeFile(tempFolder() + QStringLiteral("probe%1.tmp").arg(i)));
    const qint64 lead = 500 + 3 * probeTime.elapsed() * window / probes;
    for (int i = 0; i < probes; ++i)
        QVERIFY(QFile::remove(tempFolder() + QStringLiteral("probe%1.tmp").arg(i)));

    const qint64 start = clock() + lead;
    QStringList blockers;
    for (qint64 ms = start; ms < start + window; ++ms) {
        const QString path =
            tempFolder() +
            QStringLiteral("%1_%2_%3.temp.prs").arg(ms).arg(QCoreApplication::applicationPid()).arg(sequence);
        QVERIFY(makeFile(path));
        blockers << path;
    }
    while (clock() < start)
        QThread::msleep(1);

    UserScript noWindow;
    PropertyCallback callback;
    LogCapture log;
    const bool copied = propertyStep(noWindow, RipExtraOption{}, &callback);
    const qint64 returned = clock();
    QVERIFY2(returned < start + window,
             qPrintable(QStringLiteral("the call returned %1 ms after the last blocked name")
                            .arg(returned - start - window)));
    QVERIFY2(!copied, qPrintable(callback.info ? callback.info->prsFilePath : QString()));
    QVERIFY2(noWindow.problems().isEmpty(), qPrintable(noWindow.problems().join(QLatin1Char('\n'))));
    QCOMPARE(callback.calls, 0);
    const QList<LogCapture::Entry> lines = log.find(QtCriticalMsg, QStringLiteral("copy file failed"));
    QVERIFY2(lines.size() == 1, qPrintable(log.dump()));
    QCOMPARE(lines.first().file, moduleSource);
    QCOMPARE(lines.first().category, QStringLiteral("bex.driverui.plugin"));

    // Nothing was overwritten.
    for (const QString &path : qAsConst(blockers)) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), kept);
        file.close();
        QVERIFY(file.remove());
    }
    QVERIFY(tempFiles().isEmpty());
}

void DriverUiServiceTest::getRipEngineDriver_ofNull_isNull()
{
    LogCapture log;
    QVERIFY(ui_->getRipEngineDriver({}).isNull());
    QVERIFY2(log.entries().isEmpty(), qPrintable(log.dump()));
}

void DriverUiServiceTest::getRipEngineDriver_refusesAnotherModulesKind()
{
    auto info = QSharedPointer<ForeignDriverInfo>::create();
    info->prsFilePath = tempFolder() + QStringLiteral("other.prs");
    info->modeId = 4;
    LogCapture log;
    QVERIFY(ui_->getRipEngineDriver(info).isNull());
    const QList<LogCapture::Entry> lines = log.entries();
    QVERIFY2(lines.size() == 1, qPrintable(log.dump()));
    QCOMPARE(lines.first().type, QtCriticalMsg);
    QCOMPARE(lines.first().message, QStringLiteral("kind is different! check your code"));
    QCOMPARE(lines.first().file, moduleSource);
}

QTEST_MAIN(DriverUiServiceTest)
#include "tst_driveruiservice.moc"
