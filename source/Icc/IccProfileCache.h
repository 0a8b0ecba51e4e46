#pragma once

#include "Icc/IccProfileInfo.h"

#include <QDateTime>
#include <QHash>
#include <QLocale>
#include <QString>

// Checks of ICC profiles by path, each kept while its file keeps its size
// and modification time: the property dialog looks at the same few profiles
// on every combined-type change, and checking a large profile takes tens of
// milliseconds. A file that is missing is never kept.
class IccProfileCache
{
public:
    explicit IccProfileCache(QLocale::Language language)
        : language_(language)
    {}

    IccProfileInfo check(const QString &path);

private:
    struct Entry
    {
        qint64 size = -1;
        QDateTime modified;
        IccProfileInfo info;
    };

    QLocale::Language language_;
    QHash<QString, Entry> entries_;
};
