#pragma once

#include <QList>
#include <QString>

// What English users read: every text of the module that has an entry in the
// English translation, by context and Chinese source text, with the English
// wording word for word (slips included). An empty english means the text has
// no English wording and is shown as written in the source.
struct TranslationEntry
{
    const char *context;
    QString source;
    QString english;
};

const QList<TranslationEntry> &englishTranslationTable();

// For a data-driven test: adds the columns "context" (QByteArray) and
// "source" (QString) and one row per entry of the table.
void addSourceTextRows();
