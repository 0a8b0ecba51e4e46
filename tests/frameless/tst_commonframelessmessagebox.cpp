#include "FramelessWidget/Common/CommonFramelessMessageBox.h"
#include "MessageBoxDriver.h"
#include "MessageBoxScrollBarWatcher.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QFontMetrics>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTimer>
#include <QWindow>
#include <QtTest>

#include <functional>

namespace {

// Runs action on the message box once it is the active modal widget, the
// way a user meets it. A box that action leaves open (a check in it failed)
// is ended at once, so the test fails instead of hanging.
void whenMessageBoxShown(std::function<void(QWidget *)> action)
{
    MessageBoxDriver::whenShown<CommonFramelessMessageBox>(
        [action](CommonFramelessMessageBox *box) { action(box); });
}

QList<QPushButton *> boxButtons(QWidget *box)
{
    return box->findChildren<QPushButton *>(QStringLiteral("framelessMessageBox_btn"));
}

void clickChild(QWidget *box, const QString &name)
{
    auto *child = box->findChild<QAbstractButton *>(name);
    QVERIFY2(child, qPrintable(name));
    QTest::mouseClick(child, Qt::LeftButton);
}

// A line at least the given number of pixels wide in the font.
QString lineOfWidth(const QFontMetrics &metrics, int width)
{
    QString line;
    while (metrics.boundingRect(line).width() < width)
        line += QStringLiteral("打印机驱动");
    return line;
}

// The height of the text in the edit's viewport as the edit draws it: the
// document margin above the first block, then every block (the last one
// with the margin below it).
qreal shownTextHeight(const QPlainTextEdit *edit)
{
    const QTextDocument *document = edit->document();
    qreal height = document->documentMargin();
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next())
        height += document->documentLayout()->blockBoundingRect(block).height();
    return height;
}

// The overwrite question's shape with the given number of lines: a first
// line, file names, and the question last.
QString questionOfLines(int lines, bool chinese)
{
    QStringList text;
    text << (chinese ? QStringLiteral("如果继续安装，将会覆盖以下文件:")
                     : QStringLiteral("If you continue, the following files will be overwritten:"));
    for (int i = 1; i < lines - 1; ++i)
        text << QStringLiteral("dtp/bin/ICC Profile/RGB/样例配置_%1.icc").arg(i);
    if (lines > 1)
        text << (chinese ? QStringLiteral("是否继续？") : QStringLiteral("Continue or not?"));
    return text.join(QLatin1Char('\n'));
}

} // namespace

class CommonFramelessMessageBoxTest : public QObject
{
    Q_OBJECT

private slots:
    void question_secondButtonReturnsOne();
    void question_firstButtonReturnsZero();
    void titleBarClose_returnsMinusOne();
    void escape_returnsMinusOne();
    void windowManagerClose_returnsMinusOne_data();
    void windowManagerClose_returnsMinusOne();
    void parentDestroyedWhileOpen_returnsMinusOne();
    void parentDestroyedWhileOpen_leavesCheckedFalse();
    void boxLeftOpenByFailedCheck_isEndedAtOnce();
    void checkBox_stateReachesChecked();
    void checkBox_nullCheckedPointerIsAllowed();
    void checkBox_isHiddenWithoutText();
    void warningAndError_showOneButtonEach_data();
    void warningAndError_showOneButtonEach();
    void box_showsTitleTextIconAndOnlyCloseButton_data();
    void box_showsTitleTextIconAndOnlyCloseButton();
    void defaultButton_isMarkedDefault();
    void buttons_areCentredOnlyForHCenter_data();
    void buttons_areCentredOnlyForHCenter();
    void textEdit_shortTextGivesMinimumWidthAndTwoLines();
    void textEdit_wideLineCountsAsThreeDisplayLines();
    void textEdit_longTextIsCappedAndScrolls();
    void textEdit_keepsEmptyLines();
    void textEdit_emptyTextUsesBaseHint();
    void box_longTextScrollsInsideTheBox();
    void box_wrappedTextNeverShowsHorizontalScrollBar_data();
    void box_wrappedTextNeverShowsHorizontalScrollBar();
    void textEdit_unbreakableWordWrapsInsideTheViewport();
    void box_showsEveryLineOrScrolls_data();
    void box_showsEveryLineOrScrolls();
    void box_textIsNamedForScreenReaders();
};

void CommonFramelessMessageBoxTest::question_secondButtonReturnsOne()
{
    whenMessageBoxShown([](QWidget *box) {
        const auto buttons = boxButtons(box);
        QCOMPARE(buttons.size(), 2);
        QTest::mouseClick(buttons.at(1), Qt::LeftButton);
    });
    QCOMPARE(CommonFramelessMessageBox::question(nullptr, QStringLiteral("温馨提示"),
                                                 QStringLiteral("是否继续？"), QStringLiteral("是"),
                                                 QStringLiteral("否")),
             1);
}

void CommonFramelessMessageBoxTest::question_firstButtonReturnsZero()
{
    whenMessageBoxShown([](QWidget *box) { QTest::mouseClick(boxButtons(box).at(0), Qt::LeftButton); });
    QCOMPARE(CommonFramelessMessageBox::question(nullptr, QStringLiteral("温馨提示"),
                                                 QStringLiteral("是否继续？"), QStringLiteral("是"),
                                                 QStringLiteral("否"), 1),
             0);
}

void CommonFramelessMessageBoxTest::titleBarClose_returnsMinusOne()
{
    whenMessageBoxShown([](QWidget *box) { clickChild(box, QStringLiteral("framelessTitleBar_btnClose")); });
    QCOMPARE(CommonFramelessMessageBox::question(nullptr, QStringLiteral("温馨提示"),
                                                 QStringLiteral("是否继续？"), QStringLiteral("是"),
                                                 QStringLiteral("否")),
             -1);
}

void CommonFramelessMessageBoxTest::escape_returnsMinusOne()
{
    // Escape dismisses the box: it must not read as the first button ("yes").
    whenMessageBoxShown([](QWidget *box) { QTest::keyClick(box, Qt::Key_Escape); });
    QCOMPARE(CommonFramelessMessageBox::warning(nullptr, QStringLiteral("温馨提示"), QStringLiteral("文本"),
                                                QStringLiteral("是"), QStringLiteral("否")),
             -1);
}

void CommonFramelessMessageBoxTest::windowManagerClose_returnsMinusOne_data()
{
    QTest::addColumn<int>("how");
    QTest::newRow("close event") << 0;
    QTest::newRow("QWidget::close") << 1;
    QTest::newRow("window handle close") << 2;
}

void CommonFramelessMessageBoxTest::windowManagerClose_returnsMinusOne()
{
    QFETCH(int, how);
    bool closed = false;
    whenMessageBoxShown([how, &closed](QWidget *box) {
        switch (how) {
        case 0: {
            QCloseEvent event;
            QApplication::sendEvent(box, &event);
            closed = event.isAccepted();
            break;
        }
        case 1:
            closed = box->close();
            break;
        default:
            QVERIFY(box->windowHandle());
            closed = box->windowHandle()->close();
            break;
        }
    });
    QCOMPARE(CommonFramelessMessageBox::question(nullptr, QStringLiteral("温馨提示"),
                                                 QStringLiteral("是否删除驱动？"), QStringLiteral("是"),
                                                 QStringLiteral("否")),
             -1);
    QVERIFY(closed);
}

void CommonFramelessMessageBoxTest::parentDestroyedWhileOpen_returnsMinusOne()
{
    auto *parent = new QWidget;
    parent->show();
    QPointer<QWidget> boxSeen;
    whenMessageBoxShown([&parent, &boxSeen](QWidget *box) {
        boxSeen = box;
        QCOMPARE(box->parentWidget(), parent);
        delete parent;
        parent = nullptr;
    });
    const int result =
        CommonFramelessMessageBox::question(parent, QStringLiteral("温馨提示"), QStringLiteral("是否覆盖？"),
                                            QStringLiteral("是"), QStringLiteral("否"));
    QCOMPARE(result, -1);
    QVERIFY(!parent);
    QVERIFY(boxSeen.isNull());
}

void CommonFramelessMessageBoxTest::parentDestroyedWhileOpen_leavesCheckedFalse()
{
    auto *parent = new QWidget;
    parent->show();
    whenMessageBoxShown([&parent](QWidget *box) {
        auto *checkBox = box->findChild<QCheckBox *>(QStringLiteral("framelessMessageBox_checkbox"));
        QVERIFY(checkBox);
        QTest::mouseClick(checkBox, Qt::LeftButton);
        QVERIFY(checkBox->isChecked());
        delete parent;
        parent = nullptr;
    });
    bool checked = true;
    const int result = CommonFramelessMessageBox::warning(
        parent, QStringLiteral("温馨提示"), QStringLiteral("文本"), QStringLiteral("是"),
        QStringLiteral("否"), 0, QStringLiteral("下次不再询问"), &checked);
    QCOMPARE(result, -1);
    QVERIFY(!checked);
}

void CommonFramelessMessageBoxTest::boxLeftOpenByFailedCheck_isEndedAtOnce()
{
    // The driver itself: a user action that returns without closing the box
    // (as a failing check does) gets the box ended, not left to the timeout.
    bool reported = false;
    bool visibleWhenReported = false;
    QPointer<CommonFramelessMessageBox> shown;
    MessageBoxDriver::whenShown<CommonFramelessMessageBox>(
        [&shown](CommonFramelessMessageBox *box) { shown = box; },
        [&reported, &visibleWhenReported, &shown]() {
            reported = true;
            visibleWhenReported = shown && shown->isVisible();
        });
    QCOMPARE(CommonFramelessMessageBox::warning(nullptr, QStringLiteral("温馨提示"), QStringLiteral("文本"),
                                                QStringLiteral("确定")),
             -1);
    QVERIFY(reported);
    QVERIFY(visibleWhenReported);
}

void CommonFramelessMessageBoxTest::checkBox_stateReachesChecked()
{
    whenMessageBoxShown([](QWidget *box) {
        auto *checkBox = box->findChild<QCheckBox *>(QStringLiteral("framelessMessageBox_checkbox"));
        QVERIFY(checkBox);
        QVERIFY(checkBox->isVisible());
        QCOMPARE(checkBox->text(), QStringLiteral("下次不再询问"));
        QTest::mouseClick(checkBox, Qt::LeftButton);
        QVERIFY(checkBox->isChecked());
        QTest::mouseClick(boxButtons(box).at(0), Qt::LeftButton);
    });
    bool checked = false;
    QCOMPARE(CommonFramelessMessageBox::question(nullptr, QStringLiteral("温馨提示"), QStringLiteral("文本"),
                                                 QStringLiteral("是"), QStringLiteral("否"), 0,
                                                 QStringLiteral("下次不再询问"), &checked),
             0);
    QVERIFY(checked);

    whenMessageBoxShown([](QWidget *box) { QTest::mouseClick(boxButtons(box).at(1), Qt::LeftButton); });
    checked = true;
    QCOMPARE(CommonFramelessMessageBox::question(nullptr, QStringLiteral("温馨提示"), QStringLiteral("文本"),
                                                 QStringLiteral("是"), QStringLiteral("否"), 0,
                                                 QStringLiteral("下次不再询问"), &checked),
             1);
    QVERIFY(!checked);
}

void CommonFramelessMessageBoxTest::checkBox_nullCheckedPointerIsAllowed()
{
    bool shown = false;
    whenMessageBoxShown([&shown](QWidget *box) {
        auto *checkBox = box->findChild<QCheckBox *>(QStringLiteral("framelessMessageBox_checkbox"));
        shown = checkBox->isVisible();
        QTest::mouseClick(checkBox, Qt::LeftButton);
        QTest::mouseClick(boxButtons(box).at(0), Qt::LeftButton);
    });
    QCOMPARE(CommonFramelessMessageBox::warning(nullptr, QStringLiteral("温馨提示"), QStringLiteral("文本"),
                                                QStringLiteral("确定"), 0, QStringLiteral("下次不再询问"),
                                                nullptr),
             0);
    QVERIFY(shown);
}

void CommonFramelessMessageBoxTest::checkBox_isHiddenWithoutText()
{
    bool hidden = false;
    whenMessageBoxShown([&hidden](QWidget *box) {
        hidden = box->findChild<QCheckBox *>(QStringLiteral("framelessMessageBox_checkbox"))->isHidden();
        QTest::mouseClick(boxButtons(box).at(0), Qt::LeftButton);
    });
    CommonFramelessMessageBox::error(nullptr, QStringLiteral("温馨提示"), QStringLiteral("文本"),
                                     QStringLiteral("确定"));
    QVERIFY(hidden);
}

void CommonFramelessMessageBoxTest::warningAndError_showOneButtonEach_data()
{
    QTest::addColumn<bool>("error");
    QTest::newRow("warning") << false;
    QTest::newRow("error") << true;
}

void CommonFramelessMessageBoxTest::warningAndError_showOneButtonEach()
{
    QFETCH(bool, error);
    int count = 0;
    QString text;
    whenMessageBoxShown([&](QWidget *box) {
        const auto buttons = boxButtons(box);
        count = buttons.size();
        text = buttons.value(0) ? buttons.at(0)->text() : QString();
        QTest::mouseClick(buttons.at(0), Qt::LeftButton);
    });
    const QString title = QStringLiteral("温馨提示");
    const QString message = QStringLiteral("请选择默认打印机");
    const int result =
        error ? CommonFramelessMessageBox::error(nullptr, title, message, QStringLiteral("确定"))
              : CommonFramelessMessageBox::warning(nullptr, title, message, QStringLiteral("确定"), 0,
                                                   QString(), nullptr, Qt::AlignHCenter);
    QCOMPARE(result, 0);
    QCOMPARE(count, 1);
    QCOMPARE(text, QStringLiteral("确定"));
}

void CommonFramelessMessageBoxTest::box_showsTitleTextIconAndOnlyCloseButton_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("image");
    QTest::newRow("question") << int(CommonFramelessMessageBox::Question)
                              << ":/frameless/img/messageBox/question.png";
    QTest::newRow("warning") << int(CommonFramelessMessageBox::Warning)
                             << ":/frameless/img/messageBox/warning.png";
    QTest::newRow("error") << int(CommonFramelessMessageBox::Error) << ":/frameless/img/messageBox/error.png";
}

void CommonFramelessMessageBoxTest::box_showsTitleTextIconAndOnlyCloseButton()
{
    QFETCH(int, kind);
    QFETCH(QString, image);
    const QImage expected = QPixmap(image).toImage().convertToFormat(QImage::Format_ARGB32);
    QVERIFY(!expected.isNull());

    QImage shownIcon;
    QString shownTitle;
    QString shownText;
    bool minimizeHidden = false;
    bool maximizeHidden = false;
    bool closeVisible = false;
    bool textVisible = false;
    bool resizable = true;
    QVariant boxProperty;
    whenMessageBoxShown([&](QWidget *box) {
        boxProperty = box->property("framelessMessageBox");
        auto *icon = box->findChild<QLabel *>(QStringLiteral("framelessMessageBox_labelIcon"));
        shownIcon = icon->pixmap(Qt::ReturnByValue).toImage().convertToFormat(QImage::Format_ARGB32);
        shownTitle = box->findChild<QLabel *>(QStringLiteral("framelessTitleBar_labelText"))->text();
        auto *edit = box->findChild<MessageBoxTextEdit *>(QStringLiteral("framelessMessageBox_textEdit"));
        shownText = edit->toPlainText();
        textVisible = edit->isVisible() && edit->isReadOnly();
        minimizeHidden = box->findChild<QWidget *>(QStringLiteral("framelessTitleBar_btnMin"))->isHidden();
        maximizeHidden =
            box->findChild<QWidget *>(QStringLiteral("framelessTitleBar_btnRestore"))->isHidden();
        closeVisible = box->findChild<QWidget *>(QStringLiteral("framelessTitleBar_btnClose"))->isVisible();
        resizable = static_cast<CommonFramelessMessageBox *>(box)->isResizable();
        QTest::mouseClick(boxButtons(box).at(0), Qt::LeftButton);
    });
    const QString title = QStringLiteral("温馨提示");
    const QString text = QStringLiteral("驱动安装失败");
    switch (kind) {
    case CommonFramelessMessageBox::Question:
        CommonFramelessMessageBox::question(nullptr, title, text, QStringLiteral("是"), QStringLiteral("否"));
        break;
    case CommonFramelessMessageBox::Warning:
        CommonFramelessMessageBox::warning(nullptr, title, text, QStringLiteral("确定"));
        break;
    default:
        CommonFramelessMessageBox::error(nullptr, title, text, QStringLiteral("是"), QStringLiteral("否"));
        break;
    }
    QCOMPARE(boxProperty, QVariant(true));
    QCOMPARE(shownIcon, expected);
    QCOMPARE(shownTitle, title);
    QCOMPARE(shownText, text);
    QVERIFY(textVisible);
    QVERIFY(minimizeHidden);
    QVERIFY(maximizeHidden);
    QVERIFY(closeVisible);
    QVERIFY(!resizable);
}

void CommonFramelessMessageBoxTest::defaultButton_isMarkedDefault()
{
    QList<bool> defaults;
    whenMessageBoxShown([&defaults](QWidget *box) {
        const auto buttons = boxButtons(box);
        for (QPushButton *button : buttons)
            defaults << button->isDefault();
        QTest::keyClick(box, Qt::Key_Return);
    });
    const int result =
        CommonFramelessMessageBox::question(nullptr, QStringLiteral("温馨提示"), QStringLiteral("文本"),
                                            QStringLiteral("是"), QStringLiteral("否"), 1);
    QCOMPARE(defaults, (QList<bool>{false, true}));
    QCOMPARE(result, 1);
}

void CommonFramelessMessageBoxTest::buttons_areCentredOnlyForHCenter_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<bool>("centred");
    QTest::newRow("centre") << int(Qt::AlignHCenter) << true;
    QTest::newRow("right") << int(Qt::AlignRight) << false;
    QTest::newRow("centre with vertical centre is not exactly centre")
        << int(Qt::AlignHCenter | Qt::AlignVCenter) << false;
}

void CommonFramelessMessageBoxTest::buttons_areCentredOnlyForHCenter()
{
    QFETCH(int, alignment);
    QFETCH(bool, centred);
    int leftGap = 0;
    int rightGap = 0;
    whenMessageBoxShown([&](QWidget *box) {
        const auto buttons = boxButtons(box);
        const QRect first = buttons.first()->geometry();
        const QRect last = buttons.last()->geometry();
        leftGap = first.left();
        rightGap = box->width() - 1 - last.right();
        QTest::mouseClick(buttons.at(0), Qt::LeftButton);
    });
    CommonFramelessMessageBox::question(
        nullptr, QStringLiteral("温馨提示"), QStringLiteral("一段足够长的提示文本，让消息框比按钮宽得多。"),
        QStringLiteral("是"), QStringLiteral("否"), 0, QString(), nullptr, Qt::Alignment(alignment));
    if (centred) {
        QVERIFY2(qAbs(leftGap - rightGap) <= 1,
                 qPrintable(QStringLiteral("%1 vs %2").arg(leftGap).arg(rightGap)));
    } else {
        QCOMPARE(rightGap, 25);
        QVERIFY(leftGap > rightGap);
    }
}

void CommonFramelessMessageBoxTest::textEdit_shortTextGivesMinimumWidthAndTwoLines()
{
    MessageBoxTextEdit edit;
    edit.setMessageText(QStringLiteral("确定"));
    const int lineSpacing = QFontMetrics(edit.font()).lineSpacing();
    QCOMPARE(edit.minimumSizeHint(), QSize(150, 2 * lineSpacing));
    QCOMPARE(edit.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
}

void CommonFramelessMessageBoxTest::textEdit_wideLineCountsAsThreeDisplayLines()
{
    MessageBoxTextEdit edit;
    const QFontMetrics metrics(edit.font());
    const QString line = lineOfWidth(metrics, 1300);
    const int width = metrics.boundingRect(line).width() + 36;
    // Wide enough for three display lines of 600 pixels, not four.
    QVERIFY(width > 1200 && width <= 1800);
    edit.setMessageText(line);
    // At least one line more than the display lines; more where the laid
    // out text needs it (box_showsEveryLineOrScrolls).
    QCOMPARE(edit.minimumSizeHint().width(), 600);
    QVERIFY(edit.minimumSizeHint().height() >= 4 * metrics.lineSpacing());
    QVERIFY(edit.minimumSizeHint().height() < 5 * metrics.lineSpacing());
}

void CommonFramelessMessageBoxTest::textEdit_longTextIsCappedAndScrolls()
{
    MessageBoxTextEdit edit;
    const int lineSpacing = QFontMetrics(edit.font()).lineSpacing();
    QStringList lines;
    while (lineSpacing * (lines.size() + 1) <= 400)
        lines << QStringLiteral("如果继续安装，将会覆盖以下文件:");
    edit.setMessageText(lines.join(QLatin1Char('\n')));
    QCOMPARE(edit.minimumSizeHint().height(), 400);
    QCOMPARE(edit.verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
}

void CommonFramelessMessageBoxTest::textEdit_keepsEmptyLines()
{
    MessageBoxTextEdit edit;
    const int lineSpacing = QFontMetrics(edit.font()).lineSpacing();
    edit.setMessageText(QStringLiteral("第一行\n\n第三行"));
    const int threeLines = edit.minimumSizeHint().height();
    QVERIFY(threeLines >= 4 * lineSpacing);
    QCOMPARE(edit.toPlainText(), QStringLiteral("第一行\n\n第三行"));

    // A new text is measured anew.
    edit.setMessageText(QStringLiteral("一行"));
    QVERIFY(edit.minimumSizeHint().height() >= 2 * lineSpacing);
    QVERIFY(edit.minimumSizeHint().height() < threeLines);
}

void CommonFramelessMessageBoxTest::textEdit_emptyTextUsesBaseHint()
{
    MessageBoxTextEdit edit;
    QPlainTextEdit plain;
    QCOMPARE(edit.minimumSizeHint(), plain.minimumSizeHint());
}

void CommonFramelessMessageBoxTest::box_longTextScrollsInsideTheBox()
{
    int scrollMaximum = 0;
    int editHeight = 0;
    whenMessageBoxShown([&](QWidget *box) {
        auto *edit = box->findChild<MessageBoxTextEdit *>(QStringLiteral("framelessMessageBox_textEdit"));
        scrollMaximum = edit->verticalScrollBar()->maximum();
        editHeight = edit->height();
        QTest::mouseClick(boxButtons(box).at(0), Qt::LeftButton);
    });
    QStringList lines;
    for (int i = 0; i < 60; ++i)
        lines << QStringLiteral("ICC Profile/RGB/sample_%1.icc").arg(i);
    CommonFramelessMessageBox::warning(nullptr, QStringLiteral("温馨提示"), lines.join(QLatin1Char('\n')),
                                       QStringLiteral("确定"));
    QVERIFY(editHeight >= 400);
    QVERIFY(scrollMaximum > 0);
}

void CommonFramelessMessageBoxTest::box_wrappedTextNeverShowsHorizontalScrollBar_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("delete question") << QStringLiteral("确认删除驱动\"BexUV3220_8C.prs\"吗?");
    QTest::newRow("english question") << QStringLiteral("Delete the driver \"BexUV3220_8C.prs\"?");
    QTest::newRow("long wrapped line")
        << QStringLiteral("如果继续安装，将会覆盖以下文件，覆盖后原来的打印机驱动设置将无法恢复，")
               .repeated(4);
    QTest::newRow("long path without spaces")
        << QStringLiteral("C:/RipServer/dtp/BexUV3220_8C/ICC_Profile/RGB/").repeated(6) +
               QStringLiteral("sRGB.icc");
    QTest::newRow("one very long word") << QStringLiteral("BexUVProfile").repeated(20);
    QString lines;
    for (int i = 0; i < 40; ++i)
        lines += QStringLiteral("ICC Profile/RGB/sample_%1.icc\n").arg(i);
    QTest::newRow("many lines") << lines;
}

void CommonFramelessMessageBoxTest::box_wrappedTextNeverShowsHorizontalScrollBar()
{
    QFETCH(QString, text);
    HorizontalScrollBarWatcher watcher;
    int horizontalMaximum = -1;
    whenMessageBoxShown([&](QWidget *box) {
        auto *edit = box->findChild<MessageBoxTextEdit *>(QStringLiteral("framelessMessageBox_textEdit"));
        QVERIFY(edit);
        QVERIFY(QTest::qWaitForWindowExposed(box));
        QCoreApplication::processEvents();
        // The text fits the viewport's width: nothing hidden to the right.
        horizontalMaximum = edit->horizontalScrollBar()->maximum();
        QTest::mouseClick(boxButtons(box).at(0), Qt::LeftButton);
    });
    CommonFramelessMessageBox::warning(nullptr, QStringLiteral("温馨提示"), text, QStringLiteral("确定"));
    QCOMPARE(horizontalMaximum, 0);
    // Not even for a moment while the box settles.
    QCOMPARE(watcher.shown, 0);
    QCOMPARE(watcher.painted, 0);
}

void CommonFramelessMessageBoxTest::textEdit_unbreakableWordWrapsInsideTheViewport()
{
    MessageBoxTextEdit edit;
    // One word, far wider than the widest message box.
    const QString word = QStringLiteral("BexUVProfile").repeated(20);
    QVERIFY(QFontMetrics(edit.font()).horizontalAdvance(word) > 2 * MessageBoxTextEdit::MaximumWidth);
    edit.setMessageText(word);
    edit.resize(edit.minimumSizeHint());
    edit.show();
    QVERIFY(QTest::qWaitForWindowExposed(&edit));
    QCoreApplication::processEvents();
    QCOMPARE(edit.horizontalScrollBar()->maximum(), 0);
    QVERIFY(!edit.horizontalScrollBar()->isVisible());
    // Wrapped, not cut off.
    QVERIFY(edit.document()->lineCount() > 1);
}

void CommonFramelessMessageBoxTest::box_showsEveryLineOrScrolls_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<bool>("chinese");
    for (int lines = 1; lines <= 40; ++lines) {
        QTest::addRow("chinese %d", lines) << lines << true;
        QTest::addRow("english %d", lines) << lines << false;
    }
}

// Every line of the text is in view, or the text scrolls: the vertical
// scroll bar shows exactly when the text is higher than the viewport, which
// only happens at the maximum height, and then the last line can be reached.
void CommonFramelessMessageBoxTest::box_showsEveryLineOrScrolls()
{
    QFETCH(int, lines);
    QFETCH(bool, chinese);
    qreal textHeight = -1;
    int viewportHeight = -1;
    int editHeight = -1;
    bool scrolls = false;
    bool lastLineReached = false;
    whenMessageBoxShown([&](QWidget *box) {
        auto *edit = box->findChild<MessageBoxTextEdit *>(QStringLiteral("framelessMessageBox_textEdit"));
        QVERIFY(edit);
        QVERIFY(QTest::qWaitForWindowExposed(box));
        QCoreApplication::processEvents();
        textHeight = shownTextHeight(edit);
        viewportHeight = edit->viewport()->height();
        editHeight = edit->height();
        scrolls = edit->verticalScrollBar()->isVisible();
        if (scrolls) {
            edit->moveCursor(QTextCursor::End);
            QCoreApplication::processEvents();
            lastLineReached = edit->cursorRect().bottom() < edit->viewport()->height();
        }
        QTest::mouseClick(boxButtons(box).at(0), Qt::LeftButton);
    });
    const QString text = questionOfLines(lines, chinese);
    CommonFramelessMessageBox::question(nullptr, QStringLiteral("温馨提示"), text, QStringLiteral("是"),
                                        QStringLiteral("否"));
    QVERIFY(viewportHeight > 0);
    const QString state = QStringLiteral("text %1, viewport %2, edit %3, scroll bar %4")
                              .arg(textHeight)
                              .arg(viewportHeight)
                              .arg(editHeight)
                              .arg(scrolls);
    QVERIFY2(scrolls == (textHeight > viewportHeight), qPrintable(state));
    if (scrolls) {
        QVERIFY2(editHeight <= MessageBoxTextEdit::MaximumHeight, qPrintable(state));
        QVERIFY(lastLineReached);
    }
}

void CommonFramelessMessageBoxTest::box_textIsNamedForScreenReaders()
{
    QString name;
    whenMessageBoxShown([&](QWidget *box) {
        auto *edit = box->findChild<MessageBoxTextEdit *>(QStringLiteral("framelessMessageBox_textEdit"));
        QVERIFY(edit);
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(edit);
        QVERIFY(accessible);
        name = accessible->text(QAccessible::Name);
        QTest::mouseClick(boxButtons(box).at(0), Qt::LeftButton);
    });
    CommonFramelessMessageBox::warning(nullptr, QStringLiteral("温馨提示"), QStringLiteral("驱动导出失败"),
                                       QStringLiteral("确认"));
    QCOMPARE(name, QStringLiteral("温馨提示"));
}

QTEST_MAIN(CommonFramelessMessageBoxTest)
#include "tst_commonframelessmessagebox.moc"
