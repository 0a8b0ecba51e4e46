#include "FormTable.h"

#include <QLabel>
#include <QLayout>
#include <QMetaEnum>
#include <QPushButton>
#include <QStringList>
#include <QWidget>
#include <QtTest>

namespace FormTable {

namespace {

const QString spacingKey = QStringLiteral(" spacing ");
const QString marginsKey = QStringLiteral(" margins ");

QString policyName(QSizePolicy::Policy policy)
{
    return QString::fromLatin1(QMetaEnum::fromType<QSizePolicy::Policy>().valueToKey(policy));
}

QString marginsText(const QMargins &m)
{
    return QStringLiteral("%1,%2,%3,%4").arg(m.left()).arg(m.top()).arg(m.right()).arg(m.bottom());
}

// "QPushButton 安装": the class and text of the one child of form with that
// object name, or what is wrong ("none", "2 widgets").
QString classAndText(const QWidget *form, const QString &objectName)
{
    const QList<QWidget *> found = form->findChildren<QWidget *>(objectName);
    if (found.size() != 1)
        return found.isEmpty() ? QStringLiteral("none") : QStringLiteral("%1 widgets").arg(found.size());
    return QStringLiteral("%1 %2").arg(QString::fromLatin1(found.first()->metaObject()->className()),
                                       found.first()->property("text").toString());
}

// The line of an item of a real layout; a layout's line carries the
// properties the expected line names.
QString lineOf(QLayoutItem *item, const QString &expected)
{
    if (QLayout *layout = item->layout()) {
        QString line =
            QString::fromLatin1(layout->metaObject()->className()) + QLatin1Char(' ') + layout->objectName();
        if (expected.contains(spacingKey))
            line += spacingKey + QString::number(layout->spacing());
        if (expected.contains(marginsKey))
            line += marginsKey + marginsText(layout->contentsMargins());
        return line;
    }
    if (QWidget *widget = item->widget())
        return (QString::fromLatin1(widget->metaObject()->className()) + QLatin1Char(' ') +
                widget->objectName())
            .trimmed();
    if (QSpacerItem *spacer = item->spacerItem()) {
        const QSize size = spacer->sizeHint();
        return QStringLiteral("QSpacerItem %1x%2 %3/%4")
            .arg(size.width())
            .arg(size.height())
            .arg(policyName(spacer->sizePolicy().horizontalPolicy()),
                 policyName(spacer->sizePolicy().verticalPolicy()));
    }
    return QStringLiteral("(an item that is no layout, widget or spacer)");
}

QString indent(int depth)
{
    return QString(2 * depth, QLatin1Char(' '));
}

// Appends the lines of item and of everything it holds; each layout's line
// carries the properties that the expected line in its place names.
void appendLines(QLayoutItem *item, int depth, const QStringList &expected, QStringList &lines)
{
    lines << indent(depth) + lineOf(item, expected.value(lines.size()));
    if (QLayout *layout = item->layout()) {
        for (int i = 0; i < layout->count(); ++i)
            appendLines(layout->itemAt(i), depth + 1, expected, lines);
    }
}

} // namespace

void verifyForm(QWidget *dialog, const Form &designed)
{
    QCOMPARE(dialog->size(), designed.size);
    QCOMPARE(dialog->windowTitle(), designed.title);
    const auto *titleText = dialog->findChild<QLabel *>(QStringLiteral("framelessTitleBar_labelText"));
    QVERIFY(titleText);
    QCOMPARE(titleText->text(), designed.title);

    const Qt::WindowFlags flags = dialog->windowFlags();
    QVERIFY(flags.testFlag(Qt::FramelessWindowHint));
    QVERIFY(!flags.testFlag(Qt::WindowContextHelpButtonHint));
    QVERIFY(!flags.testFlag(Qt::WindowMinimizeButtonHint));
    QVERIFY(!flags.testFlag(Qt::WindowMaximizeButtonHint));
    QVERIFY(flags.testFlag(Qt::WindowCloseButtonHint));
    for (const char *hidden : {"framelessTitleBar_btnMin", "framelessTitleBar_btnRestore"}) {
        const auto *button = dialog->findChild<QPushButton *>(QString::fromLatin1(hidden));
        QVERIFY2(button && button->isHidden(), hidden);
    }
    const auto *close = dialog->findChild<QPushButton *>(QStringLiteral("framelessTitleBar_btnClose"));
    QVERIFY(close && !close->isHidden());

    verifyWidgets(dialog, designed.widgets);
    if (QTest::currentTestFailed())
        return;
    verifyLayout(dialog->layout(), designed.layout);
}

void verifyWidgets(const QWidget *form, const std::vector<Widget> &widgets)
{
    QStringList differences;
    for (const Widget &widget : widgets) {
        const QString expected = widget.className + QLatin1Char(' ') + widget.text;
        const QString actual = classAndText(form, widget.objectName);
        if (actual != expected)
            differences << QStringLiteral("%1 (%2): \"%3\", expected \"%4\"")
                               .arg(QString::fromUtf8(widget.row), widget.objectName, actual, expected);
    }
    if (!differences.isEmpty())
        QFAIL(qPrintable(QStringLiteral("Widgets differ from the design:\n") +
                         differences.join(QLatin1Char('\n'))));
}

void verifyLayout(QLayout *layout, const QStringList &expected)
{
    QVERIFY(layout);
    QStringList actual;
    appendLines(layout, 0, expected, actual);
    if (actual == expected)
        return;
    int line = 0;
    while (line < actual.size() && line < expected.size() && actual.at(line) == expected.at(line))
        ++line;
    QFAIL(
        qPrintable(QStringLiteral("The layout differs from the design at line %1:\n"
                                  "  actual:   \"%2\"\n  expected: \"%3\"\nThe whole layout:\n%4")
                       .arg(line + 1)
                       .arg(actual.value(line, QStringLiteral("(none)")),
                            expected.value(line, QStringLiteral("(none)")), actual.join(QLatin1Char('\n')))));
}

} // namespace FormTable
