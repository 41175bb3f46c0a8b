#include "library/FileFinder.h"

#include "library/TextOrder.h"

#include <QDir>
#include <QFile>
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

void printSkipped(const std::string& path, const std::string& reason)
{
    std::cout << path << ": " << reason << std::endl;
}

/// The entry when it is a folder or an audio file that may be taken.
std::optional<Entry> examine(const fs::directory_entry& item, const QCollator& collator)
{
    const std::string bytes = item.path().filename().string();
    if (bytes.starts_with('.'))
        return std::nullopt;
    const QString name = QString::fromStdString(bytes);
    std::error_code error;
    const auto type = item.symlink_status(error).type();
    const bool wanted =
        type == fs::file_type::directory || (type == fs::file_type::regular && hasSupportedExtension(name));
    if (error)
        printSkipped(item.path().string(), error.message());
    else if (wanted && name.toStdString() != bytes)
        printSkipped(item.path().string(), "the name is not valid UTF-8");
    else if (wanted)
        return Entry{name, type == fs::file_type::directory, collator.sortKey(name)};
    return std::nullopt;
}

std::vector<Entry> entriesOf(const QString& folder, const QCollator& collator)
{
    std::vector<Entry> entries;
    std::error_code error;
    const fs::path path = QFile::encodeName(folder).toStdString();
    for (fs::directory_iterator item(path, error), end; item != end && !error; item.increment(error)) {
        if (auto entry = examine(*item, collator))
            entries.push_back(*std::move(entry));
    }
    if (error)
        printSkipped(path.string(), error.message());
    std::sort(entries.begin(), entries.end(),
              [](const Entry& a, const Entry& b) { return a.key.compare(b.key) < 0; });
    return entries;
}

void collect(const QString& folder, const QCollator& collator, QStringList& files)
{
    const QString prefix = folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
    for (const auto& entry : entriesOf(folder, collator)) {
        if (entry.isFolder)
            collect(prefix + entry.name, collator, files);
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
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    QStringList files;
    if (hasSupportedExtension(absolute))
        files.append(absolute);
    else if (QFileInfo(absolute).isDir())
        collect(absolute, TextOrder::collator(), files);
    return files;
}

} // namespace FileFinder
