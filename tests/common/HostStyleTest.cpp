#include "HostStyle.h"
#include "FramelessWidget/Common/CommonFramelessMessageBox.h"
#include "PixelCount.h"

#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <QtTest>

#include <cmath>

namespace {

QString readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

// Relative luminance of a colour, as contrast ratios are defined on it.
double luminance(const QColor &color)
{
    const auto channel = [](int value) {
        const double c = value / 255.0;
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(color.red()) + 0.7152 * channel(color.green()) + 0.0722 * channel(color.blue());
}

double contrastRatio(const QColor &a, const QColor &b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (qMax(la, lb) + 0.05) / (qMin(la, lb) + 0.05);
}

enum class ButtonState
{
    Normal,
    Hovered,
    Pressed,
    Disabled
};

} // namespace

Q_DECLARE_METATYPE(ButtonState)

class HostStyleTest : public QObject
{
    Q_OBJECT

private slots:
    void readme_listsTheHostRules();
    void hostStyle_putsTheHostRulesAfterTheModuleSheet();
    void styleSheet_isAppliedToTheApplicationOnlyInTheStyledRun();
    void hostRules_giveMessageBoxButtonsAReadableSize();
    void hostRules_drawMessageBoxButtonTextReadablyInEveryState_data();
    void hostRules_drawMessageBoxButtonTextReadablyInEveryState();
    void hostRules_makeTheModulesMessageBoxButtonsUsable();
    void hostRules_sizeTheDialogButtons_data();
    void hostRules_sizeTheDialogButtons();
};

void HostStyleTest::readme_listsTheHostRules()
{
    const QString rules = HostStyle::hostRules();
    QVERIFY(rules.contains(QStringLiteral("QPushButton#framelessMessageBox_btn")));
    const QString readme = readFile(QStringLiteral(BEX_PROJECT_SOURCE_DIR "/README.md"));
    QVERIFY2(readme.contains(rules), "the README's host rules differ from examples/common/host_rules.qss");
}

void HostStyleTest::hostStyle_putsTheHostRulesAfterTheModuleSheet()
{
    const QString moduleSheet = readFile(HostStyle::moduleStyleSheetPath());
    QVERIFY(!moduleSheet.isEmpty());
    QCOMPARE(HostStyle::applicationStyleSheet(), moduleSheet + QLatin1Char('\n') + HostStyle::hostRules());
}

void HostStyleTest::styleSheet_isAppliedToTheApplicationOnlyInTheStyledRun()
{
    if (qEnvironmentVariableIsEmpty("BEX_TEST_STYLE_SHEET"))
        QVERIFY(qApp->styleSheet().isEmpty());
    else
        QCOMPARE(qApp->styleSheet(), HostStyle::applicationStyleSheet());
}

void HostStyleTest::hostRules_giveMessageBoxButtonsAReadableSize()
{
    QWidget window;
    window.setStyleSheet(HostStyle::applicationStyleSheet());
    auto *button = new QPushButton(QStringLiteral("是"), &window);
    button->setObjectName(QStringLiteral("framelessMessageBox_btn"));
    auto *plain = new QPushButton(QStringLiteral("是"), &window);
    button->ensurePolished();
    plain->ensurePolished();

    // Without the host's rules the module's sheet (no border, no padding)
    // leaves a button hardly larger than its text.
    QVERIFY(button->sizeHint().width() >= 80);
    QVERIFY(button->sizeHint().height() >= 26);
    QCOMPARE(button->palette().color(QPalette::ButtonText), QColor(Qt::white));
    // The rules are scoped: other buttons keep the style's look.
    QCOMPARE(plain->palette().color(QPalette::ButtonText),
             QApplication::palette().color(QPalette::ButtonText));
}

void HostStyleTest::hostRules_drawMessageBoxButtonTextReadablyInEveryState_data()
{
    QTest::addColumn<ButtonState>("state");
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("text");
    // Backgrounds from the module's sheet, texts from the host's rules.
    QTest::newRow("normal") << ButtonState::Normal << QColor(128, 0, 0) << QColor(Qt::white);
    QTest::newRow("hovered") << ButtonState::Hovered << QColor(0, 20, 0) << QColor(Qt::white);
    QTest::newRow("pressed") << ButtonState::Pressed << QColor(20, 20, 0) << QColor(Qt::white);
    QTest::newRow("disabled") << ButtonState::Disabled << QColor(20, 20, 20) << QColor(160, 160, 160);
}

void HostStyleTest::hostRules_drawMessageBoxButtonTextReadablyInEveryState()
{
    QFETCH(ButtonState, state);
    QFETCH(QColor, background);
    QFETCH(QColor, text);

    QWidget window;
    window.setStyleSheet(HostStyle::applicationStyleSheet());
    auto *layout = new QVBoxLayout(&window);
    auto *button = new QPushButton(QStringLiteral("WWWW"), &window);
    button->setObjectName(QStringLiteral("framelessMessageBox_btn"));
    layout->addWidget(button);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    switch (state) {
    case ButtonState::Normal:
        break;
    case ButtonState::Hovered:
        QTest::mouseMove(button, button->rect().center());
        QTRY_VERIFY(button->underMouse());
        break;
    case ButtonState::Pressed:
        button->setDown(true);
        break;
    case ButtonState::Disabled:
        button->setEnabled(false);
        break;
    }
    const QImage image = button->grab().toImage();

    const int total = image.width() * image.height();
    QVERIFY2(PixelCount::countPixels(image, image.rect(), background) > total / 2,
             "the module's background is not painted");
    QVERIFY2(PixelCount::countPixelsNear(image, image.rect(), text, 24) > 10,
             "the text is not drawn in the host's colour");
    // Readable: at least the contrast asked of normal text on screen.
    QVERIFY(contrastRatio(text, background) >= 4.5);
}

// The module's own box, as a host shows it: both buttons large enough to
// hit and labelled in white.
void HostStyleTest::hostRules_makeTheModulesMessageBoxButtonsUsable()
{
    const QString previousSheet = qApp->styleSheet();
    qApp->setStyleSheet(HostStyle::applicationStyleSheet());

    QList<QSize> sizes;
    QList<QColor> textColours;
    int rounds = 0;
    QTimer timer;
    timer.setInterval(10);
    QObject::connect(&timer, &QTimer::timeout, &timer, [&]() {
        QWidget *box = QApplication::activeModalWidget();
        if (!box) {
            // Never hang: give up after five seconds; the box is then not found.
            if (++rounds >= 500)
                timer.stop();
            return;
        }
        timer.stop();
        const auto buttons = box->findChildren<QPushButton *>(QStringLiteral("framelessMessageBox_btn"));
        for (QPushButton *button : buttons) {
            sizes << button->size();
            textColours << button->palette().color(QPalette::ButtonText);
        }
        if (!buttons.isEmpty())
            buttons.last()->click();
        else
            box->close();
    });
    timer.start();
    const int result = CommonFramelessMessageBox::question(
        nullptr, QStringLiteral("温馨提示"), QStringLiteral("是否继续？"), QStringLiteral("是"),
        QStringLiteral("否"), 0, QString(), nullptr, Qt::AlignHCenter);
    qApp->setStyleSheet(previousSheet);

    QCOMPARE(sizes.size(), 2);
    QCOMPARE(result, 1);
    for (const QSize &size : qAsConst(sizes)) {
        QVERIFY2(size.width() >= 80 && size.height() >= 26,
                 qPrintable(QStringLiteral("a button of %1 x %2").arg(size.width()).arg(size.height())));
    }
    for (const QColor &colour : qAsConst(textColours))
        QCOMPARE(colour, QColor(Qt::white));
}

void HostStyleTest::hostRules_sizeTheDialogButtons_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QSize>("minimum");
    QTest::newRow("normal") << QByteArray("defaultStyle_normal") << QSize(80, 26);
    QTest::newRow("small") << QByteArray("defaultStyle_small") << QSize(60, 22);
}

void HostStyleTest::hostRules_sizeTheDialogButtons()
{
    QFETCH(QByteArray, property);
    QFETCH(QSize, minimum);

    QWidget window;
    window.setStyleSheet(HostStyle::applicationStyleSheet());
    auto *button = new QPushButton(QStringLiteral("i"), &window);
    button->setProperty(property.constData(), true);
    button->ensurePolished();

    // The rule sizes the contents; the style's frame comes on top.
    QVERIFY(button->minimumWidth() >= minimum.width());
    QVERIFY(button->minimumHeight() >= minimum.height());
    QVERIFY(button->sizeHint().width() >= minimum.width());
    QVERIFY(button->sizeHint().height() >= minimum.height());
}

QTEST_MAIN(HostStyleTest)
#include "HostStyleTest.moc"
