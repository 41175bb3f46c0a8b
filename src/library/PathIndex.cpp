#include "library/PathIndex.h"

#include "platform/PathBytes.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int extensionLength = 4;

bool endsInAudioExtension(QByteArrayView text)
{
    if (text.size() < extensionLength)
        return false;
    const QByteArrayView end = text.last(extensionLength);
    return end.compare(".mp3", Qt::CaseInsensitive) == 0 || end.compare(".m4a", Qt::CaseInsensitive) == 0;
}

QByteArray reversed(QByteArray text)
{
    std::reverse(text.begin(), text.end());
    return text;
}

std::vector<QByteArray> entriesOf(const QString& path)
{
    const QByteArray bytes = PathBytes::encode(path);
    std::vector<QByteArray> entries;
    for (auto dot = bytes.indexOf('.'); dot >= 0; dot = bytes.indexOf('.', dot + 1)) {
        const qsizetype end = dot + extensionLength;
        if (end < bytes.size() && endsInAudioExtension(QByteArrayView(bytes).first(end)))
            entries.push_back(reversed(bytes.first(end)));
    }
    entries.push_back(reversed(bytes));
    return entries;
}

} // namespace

void PathIndex::insert(const QString& path)
{
    for (const auto& entry : entriesOf(path))
        ++entries_[entry];
}

void PathIndex::remove(const QString& path)
{
    for (const auto& entry : entriesOf(path)) {
        const auto found = entries_.find(entry);
        if (found != entries_.end() && --found->second == 0)
            entries_.erase(found);
    }
}

bool PathIndex::anyContains(const QString& path) const
{
    const QByteArray bytes = PathBytes::encode(path);
    const QByteArray wanted = reversed(bytes);
    if (endsInAudioExtension(bytes)) {
        const auto found = entries_.lower_bound(wanted);
        return found != entries_.end() && found->first.startsWith(wanted);
    }
    return std::any_of(entries_.begin(), entries_.end(),
                       [&](const auto& entry) { return entry.first.contains(wanted); });
}
