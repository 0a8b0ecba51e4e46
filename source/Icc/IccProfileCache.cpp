#include "Icc/IccProfileCache.h"

#include <QFileInfo>

IccProfileInfo IccProfileCache::check(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists()) {
        entries_.remove(file.absoluteFilePath());
        return IccProfileInfo::fromFile(path, language_);
    }
    const QString key = file.absoluteFilePath();
    const auto found = entries_.constFind(key);
    if (found != entries_.constEnd() && found->size == file.size() && found->modified == file.lastModified())
        return found->info;
    Entry entry{file.size(), file.lastModified(), IccProfileInfo::fromFile(path, language_)};
    entries_.insert(key, entry);
    return entry.info;
}
