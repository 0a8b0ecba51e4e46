#include "UI/SubWidget/ExtraOptionWidget.h"

#include "LogCapture.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>
#include <QtTest>

namespace {

const QString kPrintModeLine = QStringLiteral("打印模式:");
const QString kMirrorLine = QStringLiteral("是否水平镜像输出:");

const char *const kModeButtons[] = {"radioButton_manualPrintAfterRIP_", "radioButton_automatedPrintAfterRIP_",
                                    "radioButton_printWhileRIP_"};

QRadioButton *modeButton(const ExtraOptionWidget &widget, int mode)
{
    return widget.findChild<QRadioButton *>(QString::fromLatin1(kModeButtons[mode]));
}

QCheckBox *mirrorBox(const ExtraOptionWidget &widget)
{
    return widget.findChild<QCheckBox *>(QStringLiteral("checkBox_horMirror_"));
}

QList<QRadioButton *> checkedButtons(const ExtraOptionWidget &widget)
{
    QList<QRadioButton *> checked;
    for (QRadioButton *button : widget.findChildren<QRadioButton *>()) {
        if (button->isChecked())
            checked << button;
    }
    return checked;
}

RipExtraOption option(int printMode, bool horizontalMirror)
{
    RipExtraOption value;
    value.printMode = printMode;
    value.horizontalMirror = horizontalMirror;
    return value;
}

} // namespace

class ExtraOptionWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void form_isBuiltByObjectName_data();
    void form_isBuiltByObjectName();
    void form_hasItsSizeAndTitle();
    void printModes_areGroupedWithFixedIds();
    void construction_startsWithManualModeNoMirrorAndNothingChecked();
    void printModeClick_isStoredAndLogged_data();
    void printModeClick_isStoredAndLogged();
    void printModeClick_onACheckedButton_runsTheHandlerAgain();
    void mirrorClick_isStoredAndLogged();
    void setExtraOption_showsModeAndMirror_data();
    void setExtraOption_showsModeAndMirror();
    void setExtraOption_printModeWithoutAButton_isKept_data();
    void setExtraOption_printModeWithoutAButton_isKept();
    void setExtraOption_mirrorStateAlreadyShown_isNotLogged();
    void metaObject_hasNoSignalsOrSlotsOfItsOwn();
};

void ExtraOptionWidgetTest::form_isBuiltByObjectName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("className");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");

    QTest::newRow("label") << "label"
                           << "QLabel" << 0 << 0 << QStringLiteral("打印模式");
    QTest::newRow("manual") << "radioButton_manualPrintAfterRIP_"
                            << "QRadioButton" << 0 << 1 << QStringLiteral("RIP后手动打印");
    QTest::newRow("automated") << "radioButton_automatedPrintAfterRIP_"
                               << "QRadioButton" << 0 << 2 << QStringLiteral("RIP后自动打印");
    QTest::newRow("while") << "radioButton_printWhileRIP_"
                           << "QRadioButton" << 0 << 3 << QStringLiteral("边RIP边打印");
    QTest::newRow("mirror") << "checkBox_horMirror_"
                            << "QCheckBox" << 1 << 0 << QStringLiteral("镜像打印");
}

void ExtraOptionWidgetTest::form_isBuiltByObjectName()
{
    QFETCH(QString, name);
    QFETCH(QString, className);
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(QString, text);

    ExtraOptionWidget widget(nullptr);
    auto *grid = widget.findChild<QGridLayout *>(QStringLiteral("gridLayout"));
    QVERIFY(grid);
    QCOMPARE(widget.layout(), grid);

    auto *child = widget.findChild<QWidget *>(name);
    QVERIFY2(child, qPrintable(name));
    QCOMPARE(QString::fromLatin1(child->metaObject()->className()), className);
    int r = -1, c = -1, rowSpan = 0, columnSpan = 0;
    grid->getItemPosition(grid->indexOf(child), &r, &c, &rowSpan, &columnSpan);
    QCOMPARE(r, row);
    QCOMPARE(c, column);
    QCOMPARE(rowSpan, 1);
    QCOMPARE(columnSpan, 1);
    QCOMPARE(child->property("text").toString(), text);
}

void ExtraOptionWidgetTest::form_hasItsSizeAndTitle()
{
    ExtraOptionWidget widget(nullptr);
    QCOMPARE(widget.size(), QSize(406, 60));
    QCOMPARE(widget.windowTitle(), QStringLiteral("Form"));
    QCOMPARE(widget.objectName(), QStringLiteral("ExtraOptionWidget"));

    const QSizePolicy labelPolicy = widget.findChild<QLabel *>(QStringLiteral("label"))->sizePolicy();
    QCOMPARE(labelPolicy.horizontalPolicy(), QSizePolicy::Maximum);
    QCOMPARE(labelPolicy.verticalPolicy(), QSizePolicy::Preferred);
    const QSizePolicy mirrorPolicy = mirrorBox(widget)->sizePolicy();
    QCOMPARE(mirrorPolicy.horizontalPolicy(), QSizePolicy::Maximum);
    QCOMPARE(mirrorPolicy.verticalPolicy(), QSizePolicy::Fixed);
}

void ExtraOptionWidgetTest::printModes_areGroupedWithFixedIds()
{
    ExtraOptionWidget widget(nullptr);
    const QList<QButtonGroup *> groups = widget.findChildren<QButtonGroup *>();
    QCOMPARE(groups.size(), 1);
    QButtonGroup *group = groups.first();
    QCOMPARE(group->parent(), &widget);
    QVERIFY(group->exclusive());
    QCOMPARE(group->buttons().size(), 3);
    for (int mode = 0; mode < 3; ++mode)
        QCOMPARE(group->button(mode), modeButton(widget, mode));
}

void ExtraOptionWidgetTest::construction_startsWithManualModeNoMirrorAndNothingChecked()
{
    ExtraOptionWidget widget(nullptr);
    QCOMPARE(widget.extraOption().printMode, 0);
    QCOMPARE(widget.extraOption().horizontalMirror, false);
    QVERIFY(checkedButtons(widget).isEmpty());
    QVERIFY(!mirrorBox(widget)->isChecked());
}

void ExtraOptionWidgetTest::printModeClick_isStoredAndLogged_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("manual") << 0;
    QTest::newRow("automated") << 1;
    QTest::newRow("while ripping") << 2;
}

void ExtraOptionWidgetTest::printModeClick_isStoredAndLogged()
{
    QFETCH(int, mode);
    ExtraOptionWidget widget(nullptr);
    widget.setExtraOption(option(mode == 2 ? 1 : 2, true));
    LogCapture log;

    QTest::mouseClick(modeButton(widget, mode), Qt::LeftButton);

    QCOMPARE(widget.extraOption().printMode, mode);
    QCOMPARE(widget.extraOption().horizontalMirror, true);
    QCOMPARE(checkedButtons(widget), QList<QRadioButton *>{modeButton(widget, mode)});
    const auto lines = log.find(QtDebugMsg, kPrintModeLine);
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().message, QStringLiteral("打印模式: %1").arg(mode));
    QCOMPARE(lines.first().file, QStringLiteral("source/UI/SubWidget/ExtraOptionWidget"));
}

void ExtraOptionWidgetTest::printModeClick_onACheckedButton_runsTheHandlerAgain()
{
    ExtraOptionWidget widget(nullptr);
    QRadioButton *automated = modeButton(widget, 1);
    QTest::mouseClick(automated, Qt::LeftButton);
    LogCapture log;

    QTest::mouseClick(automated, Qt::LeftButton);
    widget.setExtraOption(option(1, false));

    QVERIFY(automated->isChecked());
    QCOMPARE(widget.extraOption().printMode, 1);
    const auto lines = log.find(QtDebugMsg, kPrintModeLine);
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines.at(0).message, QStringLiteral("打印模式: 1"));
    QCOMPARE(lines.at(1).message, QStringLiteral("打印模式: 1"));
}

void ExtraOptionWidgetTest::mirrorClick_isStoredAndLogged()
{
    ExtraOptionWidget widget(nullptr);
    LogCapture log;

    QTest::mouseClick(mirrorBox(widget), Qt::LeftButton);
    QCOMPARE(widget.extraOption().horizontalMirror, true);
    QTest::mouseClick(mirrorBox(widget), Qt::LeftButton);
    QCOMPARE(widget.extraOption().horizontalMirror, false);

    const auto lines = log.find(QtDebugMsg, kMirrorLine);
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines.at(0).message, QStringLiteral("是否水平镜像输出: true"));
    QCOMPARE(lines.at(1).message, QStringLiteral("是否水平镜像输出: false"));
    QCOMPARE(widget.extraOption().printMode, 0);
}

void ExtraOptionWidgetTest::setExtraOption_showsModeAndMirror_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("mirror");
    for (int mode = 0; mode < 3; ++mode) {
        QTest::addRow("mode %d, mirror", mode) << mode << true;
        QTest::addRow("mode %d, no mirror", mode) << mode << false;
    }
}

void ExtraOptionWidgetTest::setExtraOption_showsModeAndMirror()
{
    QFETCH(int, mode);
    QFETCH(bool, mirror);
    ExtraOptionWidget widget(nullptr);
    widget.setExtraOption(option((mode + 1) % 3, !mirror));
    LogCapture log;

    widget.setExtraOption(option(mode, mirror));

    QCOMPARE(checkedButtons(widget), QList<QRadioButton *>{modeButton(widget, mode)});
    QCOMPARE(mirrorBox(widget)->isChecked(), mirror);
    QCOMPARE(widget.extraOption().printMode, mode);
    QCOMPARE(widget.extraOption().horizontalMirror, mirror);
    QCOMPARE(log.count(QtDebugMsg, kPrintModeLine), 1);
    QCOMPARE(log.count(QtDebugMsg, kMirrorLine), 1);
}

void ExtraOptionWidgetTest::setExtraOption_printModeWithoutAButton_isKept_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("3") << 3;
    QTest::newRow("-1") << -1;
    QTest::newRow("large") << 1000;
}

void ExtraOptionWidgetTest::setExtraOption_printModeWithoutAButton_isKept()
{
    QFETCH(int, mode);
    ExtraOptionWidget widget(nullptr);
    widget.setExtraOption(option(2, false));
    LogCapture log;

    widget.setExtraOption(option(mode, true));

    // The previously checked mode stays checked; the value is kept as given.
    QCOMPARE(checkedButtons(widget), QList<QRadioButton *>{modeButton(widget, 2)});
    QCOMPARE(widget.extraOption().printMode, mode);
    QCOMPARE(widget.extraOption().horizontalMirror, true);
    QCOMPARE(log.count(QtDebugMsg, kPrintModeLine), 0);

    // Not even on a fresh widget does a mode without a button check one.
    ExtraOptionWidget fresh(nullptr);
    fresh.setExtraOption(option(mode, false));
    QVERIFY(checkedButtons(fresh).isEmpty());
    QCOMPARE(fresh.extraOption().printMode, mode);
}

void ExtraOptionWidgetTest::setExtraOption_mirrorStateAlreadyShown_isNotLogged()
{
    ExtraOptionWidget widget(nullptr);
    LogCapture log;
    widget.setExtraOption(option(0, false));
    QCOMPARE(log.count(QtDebugMsg, kMirrorLine), 0);
    QCOMPARE(widget.extraOption().horizontalMirror, false);

    widget.setExtraOption(option(0, true));
    QCOMPARE(log.count(QtDebugMsg, kMirrorLine), 1);
    log.clear();
    widget.setExtraOption(option(1, true));
    QCOMPARE(log.count(QtDebugMsg, kMirrorLine), 0);
    QCOMPARE(widget.extraOption().horizontalMirror, true);
    QVERIFY(mirrorBox(widget)->isChecked());
}

void ExtraOptionWidgetTest::metaObject_hasNoSignalsOrSlotsOfItsOwn()
{
    const QMetaObject &meta = ExtraOptionWidget::staticMetaObject;
    QCOMPARE(meta.methodCount(), meta.methodOffset());
}

QTEST_MAIN(ExtraOptionWidgetTest)
#include "tst_extraoptionwidget.moc"
