// The driver property dialog laid out as the operator sees it: a real window
// (on Windows the native platform plugin, with the native style's metrics) at
// the size of a first opening, on each sample driver. The content fits the
// window's width whether or not the vertical scroll bar is shown, the
// other-property list shows all its rows, and no section takes room it does
// not use.
#include "PropertyDlgTestSupport.h"
#include "SampleDriverFiles.h"
#include "TestAppDir.h"

#include "Config/PrinterDriverConfig.h"
#include "UI/PrinterDriverManager.h"
#include "UI/PrinterDriverPropertyDlg.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QtTest>

#include <algorithm>

using namespace PropertyDlgTest;

namespace {

const QStringList sampleNames = {QStringLiteral("BexUV2513_CMYKWV"), QStringLiteral("BexUV1610_CMYKLcLm"),
                                 QStringLiteral("BexUV3220_8C")};

// The height up to which the other-property list grows before it scrolls.
constexpr int commonListMaximum = 320;

// The least room between a button's text and each of its edges.
constexpr int buttonTextRoom = 6;

int verticalMargins(const QLayout *layout)
{
    const QMargins margins = layout->contentsMargins();
    return margins.top() + margins.bottom();
}

// Every widget inside `root` with its geometry: printed when a check fails,
// so that the run shows where the room went.
QString describeTree(const QWidget *root, int depth = 0)
{
    QString text;
    for (const QObject *object : root->children()) {
        const auto *widget = qobject_cast<const QWidget *>(object);
        if (!widget || !widget->isVisibleTo(root))
            continue;
        const QRect r = widget->geometry();
        text += QStringLiteral("%1%2 %3 (%4,%5 %6x%7) hint %8x%9 min %10x%11\n")
                    .arg(QString(depth * 2, QLatin1Char(' ')))
                    .arg(QLatin1String(widget->metaObject()->className()))
                    .arg(widget->objectName())
                    .arg(r.x())
                    .arg(r.y())
                    .arg(r.width())
                    .arg(r.height())
                    .arg(widget->sizeHint().width())
                    .arg(widget->sizeHint().height())
                    .arg(widget->minimumSizeHint().width())
                    .arg(widget->minimumSizeHint().height());
        if (depth < 6)
            text += describeTree(widget, depth + 1);
    }
    return text;
}

// Lets the window system apply what the dialog asked for and the layouts
// settle.
void settle()
{
    for (int round = 0; round < 10; ++round)
        QTest::qWait(20);
}

} // namespace

class PrinterDriverPropertyDlgLayoutTest : public QObject
{
    Q_OBJECT

private:
    QHash<QString, QString> ids_; // sample name -> driver id

private slots:
    void initTestCase()
    {
        QVERIFY(SampleDriverFiles::restage());
        TestAppDir::remove(QStringLiteral("PrinterDriverConfig.ini"));
        PrinterDriverConfig::instance()->readConfig();
        QVERIFY(PrinterDriverManager::instance()->getHandler());
        for (const QString &name : sampleNames) {
            const auto info =
                PrinterDriverManager::instance()->installDriver(SampleDriverFiles::prsPath(name));
            QVERIFY(info);
            ids_.insert(name, info->id);
        }
    }

    void cleanupTestCase() { PrinterDriverManager::instance()->unload(); }

    void defaultSize_fitsWithoutSpuriousScrolling_data()
    {
        QTest::addColumn<QString>("sample");
        QTest::addColumn<bool>("everySection");
        for (const QString &name : sampleNames) {
            QTest::newRow(qPrintable(name + QStringLiteral(" first opening"))) << name << false;
            QTest::newRow(qPrintable(name + QStringLiteral(" every section open"))) << name << true;
        }
    }

    void defaultSize_fitsWithoutSpuriousScrolling()
    {
        QFETCH(QString, sample);
        QFETCH(bool, everySection);
        const auto config = PrinterDriverConfig::instance();
        // No window record: the dialog opens at its default size.
        config->setWindowRecord(QPoint(0, 0), QSize());
        // A first opening shows every section but the ink settings.
        config->setShowIccDetail(true);
        config->setShowInkDetail(everySection);
        config->setShowOtherPropertyDetail(true);

        // Opened over a host window, as a host does.
        QWidget host;
        host.resize(400, 300);
        host.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        PrinterDriverPropertyDlg dialog(ids_.value(sample), &host);
        dialog.setExtraOption(RipExtraOption{1, false});
        // What the first frame shows: a window system may paint the window
        // before any posted layout request is delivered.
        dialog.show();
        checkLayout(&dialog, everySection, "on showing");
        if (QTest::currentTestFailed())
            return;
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        settle();
        checkLayout(&dialog, everySection, "settled");
        dialog.reject();
    }

private:
    static void checkLayout(QWidget *dialog, bool everySection, const char *when)
    {
        auto *main = child<QScrollArea>(dialog, QStringLiteral("scrollArea_main_"));
        auto *common = child<QScrollArea>(dialog, QStringLiteral("scrollArea_common_"));
        auto *combo = child<QComboBox>(dialog, QStringLiteral("comboBox_combinedType_"));
        auto *simple = child<QWidget>(dialog, QStringLiteral("widget_simple_"));
        auto *resolution = child<QWidget>(dialog, QStringLiteral("widget_resolution_"));
        QVERIFY(main && common && combo && simple && resolution);
        const QString tree = QStringLiteral("%1: dialog %2x%3\n")
                                 .arg(QLatin1String(when))
                                 .arg(dialog->width())
                                 .arg(dialog->height()) +
                             describeTree(dialog);

        // The default size of a first opening: 720x750 where the screen has
        // room (the offscreen platform's screen is smaller).
        const QRect available = dialog->screen()->availableGeometry();
        const QSize defaultSize(std::min(available.width() - 100, 720),
                                std::min(available.height() - 80, 750));
        QCOMPARE(dialog->size(), defaultSize);

        // The content fits the viewport's width: no horizontal scroll bar,
        // with or without the vertical one.
        QVERIFY2(!main->horizontalScrollBar()->isVisible(), qPrintable(tree));
        const int barWidth = main->verticalScrollBar()->sizeHint().width();
        QVERIFY2(main->widget()->minimumSizeHint().width() <= main->maximumViewportSize().width() - barWidth,
                 qPrintable(tree));

        // Every row of the other properties shows: the list does not scroll
        // while its rows fit under its maximum height.
        const int listHeight = common->widget()->sizeHint().height();
        QVERIFY(!common->widget()->findChildren<QComboBox *>().isEmpty());
        if (listHeight <= commonListMaximum) {
            QVERIFY2(!common->verticalScrollBar()->isVisible(), qPrintable(tree));
            QVERIFY2(common->viewport()->height() >= listHeight, qPrintable(tree));
        }
        QVERIFY2(!common->horizontalScrollBar()->isVisible(), qPrintable(tree));

        // The combined-type row is as tall as its combo box: the window's
        // spare height goes elsewhere.
        QVERIFY2(simple->height() <= combo->height() + verticalMargins(simple->layout()), qPrintable(tree));
        QVERIFY2(resolution->height() <= simple->height() + verticalMargins(resolution->layout()),
                 qPrintable(tree));

        // The combined-type box takes its row, from just after its label's
        // text to the row's end.
        auto *comboLabel = child<QLabel>(dialog, QStringLiteral("label_combinedType_"));
        QVERIFY(comboLabel);
        const int rowEnd = simple->contentsRect().right() - simple->layout()->contentsMargins().right();
        QVERIFY2(combo->geometry().right() >= rowEnd, qPrintable(tree));
        QVERIFY2(combo->x() - (comboLabel->x() + comboLabel->sizeHint().width()) <=
                     2 * simple->style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing) + 12,
                 qPrintable(tree));

        // No button or label shows less than its text needs; a button's
        // text keeps some room from the button's edges.
        for (QWidget *widget : dialog->findChildren<QWidget *>()) {
            if (!widget->isVisibleTo(dialog) ||
                widget->objectName().startsWith(QLatin1String("framelessTitleBar_")))
                continue;
            int needed = 0;
            if (auto *button = qobject_cast<QPushButton *>(widget))
                needed =
                    std::max(button->sizeHint().width(),
                             button->fontMetrics().horizontalAdvance(button->text()) + 2 * buttonTextRoom);
            else if (qobject_cast<QLabel *>(widget))
                needed = widget->minimumSizeHint().width();
            QVERIFY2(widget->width() >= needed,
                     qPrintable(widget->objectName() +
                                QStringLiteral(" is %1 wide, needs %2\n").arg(widget->width()).arg(needed) +
                                tree));
        }

        // Each profile row has a label that covers it.
        auto *iccGrid = qobject_cast<QGridLayout *>(
            child<QWidget>(dialog, QStringLiteral("widget_iccDetail_"))->layout());
        QVERIFY(iccGrid);
        for (const char *edit : {"lineEdit_ICC_RGB_", "lineEdit_ICC_CMYK_", "lineEdit_ICC_Curve_"}) {
            int row = -1, column = -1, rowSpan = 0, columnSpan = 0;
            iccGrid->getItemPosition(iccGrid->indexOf(child<QWidget>(dialog, QLatin1String(edit))), &row,
                                     &column, &rowSpan, &columnSpan);
            bool labelled = false;
            for (int index = 0; index < iccGrid->count(); ++index) {
                int labelRow = -1, labelColumn = -1, labelRows = 0, labelColumns = 0;
                iccGrid->getItemPosition(index, &labelRow, &labelColumn, &labelRows, &labelColumns);
                auto *label = qobject_cast<QLabel *>(iccGrid->itemAt(index)->widget());
                if (label && !label->text().isEmpty() && labelColumn < column && labelRow <= row &&
                    row < labelRow + labelRows)
                    labelled = true;
            }
            QVERIFY2(labelled, edit);
        }

        // Without every section open the dialog at 720x750 needs no
        // scrolling at all.
        if (!everySection && dialog->size() == QSize(720, 750))
            QVERIFY2(!main->verticalScrollBar()->isVisible(), qPrintable(tree));
    }
};

QTEST_MAIN(PrinterDriverPropertyDlgLayoutTest)
#include "tst_printerdriverpropertydlg_layout.moc"
