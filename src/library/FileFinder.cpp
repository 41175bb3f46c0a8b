#include "library/FileFinder.h"

#include "library/TextOrder.h"
#include "platform/FileSystem.h"
#include "platform/PathBytes.h"

#include <QFileInfo>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <optional>
#include <vector>

namespace FileFinder {

namespace {

namespace fs = std::filesystem;

struct Entry {
    QString name;
    bool isFolder;
    QCollatorSortKey key;
};

QString textOf(const fs::path& path)
{
    return PathBytes::decode(QByteArray::fromStdString(path.string()));
}

/// The entry when it is a folder or an audio file that may be taken.
std::optional<Entry> examine(const fs::directory_entry& item, const QCollator& collator, const Skipped& skipped)
{
    const QString name = textOf(item.path().filename());
    if (name.startsWith(QLatin1Char('.')))
        return std::nullopt;
    std::error_code error;
    const auto type = item.symlink_status(error).type();
    const bool wanted =
        type == fs::file_type::directory || (type == fs::file_type::regular && hasSupportedExtension(name));
    if (error)
        skipped(textOf(item.path()), QString::fromStdString(error.message()));
    else if (wanted)
        return Entry{name, type == fs::file_type::directory, collator.sortKey(name)};
    return std::nullopt;
}

std::vector<Entry> entriesOf(const QString& folder, const QCollator& collator, const Skipped& skipped)
{
    std::vector<Entry> entries;
    std::error_code error;
    const fs::path path = PathBytes::encode(folder).toStdString();
    for (fs::directory_iterator item(path, error), end; item != end && !error; item.increment(error)) {
        if (auto entry = examine(*item, collator, skipped))
            entries.push_back(*std::move(entry));
    }
    if (error)
        skipped(textOf(path), QString::fromStdString(error.message()));
    std::sort(entries.begin(), entries.end(),
              [](const Entry& a, const Entry& b) { return a.key.compare(b.key) < 0; });
    return entries;
}

void collect(const QString& folder, const QCollator& collator, const Skipped& skipped, QStringList& files)
{
    const QString prefix = folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
    for (const auto& entry : entriesOf(folder, collator, skipped)) {
        if (entry.isFolder)
            collect(prefix + entry.name, collator, skipped, files);
        else
            files.append(prefix + entry.name);
    }
}

} // namespace

const QStringList& supportedExtensions()
{
    static const QStringList extensions{QStringLiteral("mp3"), QStringLiteral("m4a")};
    return extensions;
}

bool hasSupportedExtension(const QString& path)
{
    return supportedExtensions().contains(QFileInfo(path).suffix());
}

QStringList audioFiles(const QString& path)
{
    return audioFiles(path, {});
}

QStringList audioFiles(const QString& path, const Skipped& skipped)
{
    const QString absolute = FileSystem::absolutePath(path);
    if (hasSupportedExtension(absolute))
        return {absolute};
    const auto print = [&](const QString& item, const QString& reason) {
        std::cout << PathBytes::encode(item).constData() << ": " << reason.toStdString() << std::endl;
        if (skipped)
            skipped(item, reason);
    };
    return FileSystem::isFolder(absolute) ? audioFilesBelow(absolute, print) : QStringList();
}

QStringList audioFilesBelow(const QString& folder, const Skipped& skipped)
{
    QStringList files;
    collect(folder, TextOrder::collator(), skipped, files);
    return files;
}

} // namespace FileFinder
