#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QResource>
#include <QTranslator>
#include <QVBoxLayout>
#include <QXmlStreamReader>
#include <QtEndian>
#include <QtTest>

namespace {

const QString styleSheetPath = QStringLiteral(":/frameless/qss/frameless_style.qss");
const QString englishPath = QStringLiteral(":/BexRipEngineDriverUI_RipServer/language/English.qm");
const QString chinesePath = QStringLiteral(":/BexRipEngineDriverUI_RipServer/language/Chinese.qm");

// The 16 bytes every compiled Qt translation file starts with.
const QByteArray qmMagic = QByteArray::fromHex("3cb86418caef9c95cd211cbf60a1bddd");

struct StyleRule
{
    QStringList selectors;
    QStringList declarations;

    bool operator==(const StyleRule &other) const
    {
        return selectors == other.selectors && declarations == other.declarations;
    }
};

QString describe(const StyleRule &rule)
{
    return rule.selectors.join(QStringLiteral(", ")) + QStringLiteral(" { ") +
           rule.declarations.join(QStringLiteral("; ")) + QStringLiteral(" }");
}

// Splits a style sheet into its rules: selectors and "property: value"
// declarations, each trimmed, whitespace inside them collapsed.
QList<StyleRule> parseStyleSheet(QString text)
{
    text.remove(
        QRegularExpression(QStringLiteral("/\\*.*?\\*/"), QRegularExpression::DotMatchesEverythingOption));
    QList<StyleRule> rules;
    const QStringList blocks = text.split(QLatin1Char('}'));
    for (const QString &block : blocks) {
        if (block.trimmed().isEmpty())
            continue;
        const int open = block.indexOf(QLatin1Char('{'));
        StyleRule rule;
        const QStringList selectors = block.left(open).split(QLatin1Char(','));
        for (const QString &selector : selectors)
            rule.selectors << selector.simplified();
        const QStringList declarations = block.mid(open + 1).split(QLatin1Char(';'));
        for (const QString &declaration : declarations) {
            if (declaration.trimmed().isEmpty())
                continue;
            const int colon = declaration.indexOf(QLatin1Char(':'));
            rule.declarations << declaration.left(colon).simplified() + QStringLiteral(": ") +
                                     declaration.mid(colon + 1).simplified();
        }
        rules << rule;
    }
    return rules;
}

QStringList titleBarButtons(const QString &state = QString())
{
    return {QStringLiteral("QPushButton#framelessTitleBar_btnMin") + state,
            QStringLiteral("QPushButton#framelessTitleBar_btnRestore") + state,
            QStringLiteral("QPushButton#framelessTitleBar_btnClose") + state};
}

QString titleBarImage(const char *file)
{
    return QStringLiteral("background-image: url(:/frameless/img/titleBar/") + QLatin1String(file) +
           QLatin1Char(')');
}

// The frameless framework's look, rule by rule in file order.
QList<StyleRule> expectedRules()
{
    return {
        {titleBarButtons(),
         {QStringLiteral("background-repeat: no-repeat"), QStringLiteral("background-position: center"),
          QStringLiteral("background-color: transparent"), QStringLiteral("border: none"),
          QStringLiteral("width: 26px"), QStringLiteral("height: 26px")}},
        {titleBarButtons(QStringLiteral(":hover")), {QStringLiteral("background-color: #474747")}},
        {titleBarButtons(QStringLiteral(":pressed")), {QStringLiteral("background-color: #505050")}},
        {titleBarButtons(QStringLiteral(":disabled")), {QStringLiteral("background-color: #808080")}},
        {{QStringLiteral("QPushButton#framelessTitleBar_btnMin")}, {titleBarImage("minimize.png")}},
        {{QStringLiteral("QPushButton#framelessTitleBar_btnRestore:checked")},
         {titleBarImage("restore.png")}},
        {{QStringLiteral("QPushButton#framelessTitleBar_btnRestore:!checked")},
         {titleBarImage("maximize.png")}},
        {{QStringLiteral("QPushButton#framelessTitleBar_btnClose")}, {titleBarImage("close_normal.png")}},
        {{QStringLiteral("QPushButton#framelessTitleBar_btnClose:hover"),
          QStringLiteral("QPushButton#framelessTitleBar_btnClose:pressed")},
         {titleBarImage("close_hover.png"), QStringLiteral("background-color: #ff0042")}},
        {{QStringLiteral("QPushButton#framelessTitleBar_btnClose:disabled")},
         {titleBarImage("close_disabled.png"), QStringLiteral("background-color: #40808080")}},
        {{QStringLiteral("QWidget#framelessTitleBar")},
         {QStringLiteral("background-color: red"), QStringLiteral("min-height: 30px"),
          QStringLiteral("max-height: 30px"), QStringLiteral("border-bottom: 1px solid green")}},
        {{QStringLiteral("QLabel#framelessMessageBox_labelIcon")},
         {QStringLiteral("min-width: 32px"), QStringLiteral("max-width: 32px"),
          QStringLiteral("min-height: 32px"), QStringLiteral("max-height: 32px")}},
        {{QStringLiteral("QPlainTextEdit#framelessMessageBox_textEdit")},
         {QStringLiteral("background: rgba(0,0,0,0)"), QStringLiteral("border: none"),
          QStringLiteral("margin-top: 8px")}},
        {{QStringLiteral("QCheckBox#framelessMessageBox_checkbox")}, {}},
        {{QStringLiteral("QPushButton#framelessMessageBox_btn")},
         {QStringLiteral("background-color: rgb(128,0,0)"), QStringLiteral("border: none")}},
        {{QStringLiteral("QPushButton#framelessMessageBox_btn:hover")},
         {QStringLiteral("background-color: rgb(0,20,0)")}},
        {{QStringLiteral("QPushButton#framelessMessageBox_btn:pressed")},
         {QStringLiteral("background-color: rgb(20,20,0)")}},
        {{QStringLiteral("QPushButton#framelessMessageBox_btn:disabled")},
         {QStringLiteral("background-color: rgb(20,20,20)")}},
    };
}

QByteArray readResource(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

// Number of messages in a compiled translation file: its hash table holds
// one 8-byte entry (hash, offset) per message.
int qmMessageCount(const QByteArray &qm)
{
    constexpr char hashesTag = 0x42;
    int pos = qmMagic.size();
    while (pos + 5 <= qm.size()) {
        const char tag = qm.at(pos);
        const quint32 length = qFromBigEndian<quint32>(qm.constData() + pos + 1);
        if (tag == hashesTag)
            return int(length / 8);
        pos += 5 + int(length);
    }
    return 0;
}

} // namespace

class ResourcesTest : public QObject
{
    Q_OBJECT

private slots:
    void image_isEmbeddedUncompressedAtItsSize_data();
    void image_isEmbeddedUncompressedAtItsSize();
    void styleSheet_isZlibCompressed();
    void styleSheet_linesEndInCarriageReturnLineFeed();
    void styleSheet_holdsEveryRuleInOrder();
    void styleSheet_imagesExist();
    void styleSheet_fixesTitleBarHeightAndIconSize();
    void translationFiles_areEmbeddedUncompressed_data();
    void translationFiles_areEmbeddedUncompressed();
    void chineseTranslation_isTheFileMagicOnly();
    void chineseTranslation_loadsAndTranslatesNothing();
    void englishTranslation_holdsAllMessages();
};

void ResourcesTest::image_isEmbeddedUncompressedAtItsSize_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");

    const QSize titleBar(26, 26);
    const QSize messageBox(48, 48);
    const char *titleBarImages[] = {"close_normal", "close_hover", "close_disabled", "restore",
                                    "menu",         "maximize",    "minimize"};
    for (const char *name : titleBarImages) {
        const QString path = QStringLiteral(":/frameless/img/titleBar/%1.png").arg(QLatin1String(name));
        QTest::newRow(qPrintable(path)) << path << titleBar;
    }
    QTest::newRow("shadow") << QStringLiteral(":/frameless/img/background/shadow.png") << QSize(34, 160);
    const char *messageBoxImages[] = {"warning", "question", "info", "error", "success"};
    for (const char *name : messageBoxImages) {
        const QString path = QStringLiteral(":/frameless/img/messageBox/%1.png").arg(QLatin1String(name));
        QTest::newRow(qPrintable(path)) << path << messageBox;
    }
}

void ResourcesTest::image_isEmbeddedUncompressedAtItsSize()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);

    const QResource resource(path);
    QVERIFY2(resource.isValid(), qPrintable(path + QStringLiteral(" is not embedded")));
    QCOMPARE(resource.compressionAlgorithm(), QResource::NoCompression);
    QCOMPARE(readResource(path).left(8), QByteArray("\x89PNG\r\n\x1a\n"));

    const QImage image(path);
    QVERIFY(!image.isNull());
    QCOMPARE(image.size(), size);
}

void ResourcesTest::styleSheet_isZlibCompressed()
{
    const QResource resource(styleSheetPath);
    QVERIFY(resource.isValid());
    QCOMPARE(resource.compressionAlgorithm(), QResource::ZlibCompression);
    // The stored bytes are smaller than the text read through the resource.
    QVERIFY(resource.size() < resource.uncompressedSize());
    QCOMPARE(readResource(styleSheetPath).size(), resource.uncompressedSize());
}

void ResourcesTest::styleSheet_linesEndInCarriageReturnLineFeed()
{
    const QByteArray text = readResource(styleSheetPath);
    QVERIFY(!text.isEmpty());
    QVERIFY(text.endsWith("\r\n"));
    const int lines = text.count('\n');
    QVERIFY(lines > 1);
    QCOMPARE(text.count("\r\n"), lines);
    QCOMPARE(text.count('\r'), lines);
}

void ResourcesTest::styleSheet_holdsEveryRuleInOrder()
{
    const QList<StyleRule> actual = parseStyleSheet(QString::fromUtf8(readResource(styleSheetPath)));
    const QList<StyleRule> expected = expectedRules();
    for (int i = 0; i < qMin(actual.size(), expected.size()); ++i) {
        QVERIFY2(actual.at(i) == expected.at(i),
                 qPrintable(QStringLiteral("rule %1 is\n  %2\nexpected\n  %3")
                                .arg(i)
                                .arg(describe(actual.at(i)), describe(expected.at(i)))));
    }
    QCOMPARE(actual.size(), expected.size());
}

void ResourcesTest::styleSheet_imagesExist()
{
    const QString text = QString::fromUtf8(readResource(styleSheetPath));
    QRegularExpressionMatchIterator urls =
        QRegularExpression(QStringLiteral("url\\((.*?)\\)")).globalMatch(text);
    int count = 0;
    while (urls.hasNext()) {
        const QString path = urls.next().captured(1);
        QVERIFY2(QFile::exists(path), qPrintable(path));
        QCOMPARE(QImage(path).size(), QSize(26, 26));
        ++count;
    }
    QCOMPARE(count, 6);
}

void ResourcesTest::styleSheet_fixesTitleBarHeightAndIconSize()
{
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *titleBar = new QWidget;
    titleBar->setObjectName(QStringLiteral("framelessTitleBar"));
    auto *icon = new QLabel;
    icon->setObjectName(QStringLiteral("framelessMessageBox_labelIcon"));
    auto *close = new QPushButton;
    close->setObjectName(QStringLiteral("framelessTitleBar_btnClose"));
    layout->addWidget(titleBar);
    layout->addWidget(icon);
    layout->addWidget(close);

    window.setStyleSheet(QString::fromUtf8(readResource(styleSheetPath)));
    window.ensurePolished();
    titleBar->ensurePolished();
    icon->ensurePolished();
    close->ensurePolished();

    // 30 px of content and the 1 px bottom border, whatever the layout offers.
    QCOMPARE(titleBar->minimumHeight(), 30 + 1);
    QCOMPARE(titleBar->maximumHeight(), 30 + 1);
    QCOMPARE(icon->minimumSize(), QSize(32, 32));
    QCOMPARE(icon->maximumSize(), QSize(32, 32));
    QCOMPARE(close->sizeHint(), QSize(26, 26));
}

void ResourcesTest::translationFiles_areEmbeddedUncompressed_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("English") << englishPath;
    QTest::newRow("Chinese") << chinesePath;
}

void ResourcesTest::translationFiles_areEmbeddedUncompressed()
{
    QFETCH(QString, path);
    const QResource resource(path);
    QVERIFY(resource.isValid());
    QCOMPARE(resource.compressionAlgorithm(), QResource::NoCompression);
    QVERIFY(readResource(path).startsWith(qmMagic));
}

void ResourcesTest::chineseTranslation_isTheFileMagicOnly()
{
    QCOMPARE(readResource(chinesePath), qmMagic);
    QCOMPARE(QResource(chinesePath).size(), qint64(16));
}

void ResourcesTest::chineseTranslation_loadsAndTranslatesNothing()
{
    QTranslator translator;
    QVERIFY(translator.load(chinesePath));
    QVERIFY(translator.isEmpty());
    QCOMPARE(translator.translate("CommonFramelessTitleBar", "关闭"), QString());
}

void ResourcesTest::englishTranslation_holdsAllMessages()
{
    // Every translated message of the source file reaches the compiled one.
    QFile ts(QStringLiteral(BEX_SOURCE_ROOT "resources/language/English.ts"));
    QVERIFY2(ts.open(QIODevice::ReadOnly), qPrintable(ts.fileName()));
    int translated = 0;
    QXmlStreamReader xml(&ts);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("translation") &&
            !xml.readElementText().isEmpty())
            ++translated;
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    // The 94 messages the module started with, and those added since.
    QVERIFY(translated >= 94);
    const QByteArray qm = readResource(englishPath);
    QCOMPARE(qmMessageCount(qm), translated);

    QTranslator translator;
    QVERIFY(translator.load(englishPath));
    QVERIFY(!translator.isEmpty());
}

QTEST_MAIN(ResourcesTest)
#include "ResourcesTest.moc"
