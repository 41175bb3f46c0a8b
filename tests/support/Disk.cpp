#include "support/Disk.h"

#include "support/ScratchFolder.h"

#include <QCryptographicHash>

#include <algorithm>
#include <cstring>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using CallRecorder::Call;

} // namespace

Disk Disk::read(const QByteArray& root)
{
    Disk disk;
    disk.root_ = root;
    const auto add = [&disk](const QByteArray& path) {
        struct stat status {};
        if (::lstat(path.constData(), &status) != 0)
            qFatal("Can't look at %s", path.constData());
        disk.names_[path] = status.st_ino;
        File& file = disk.files_[status.st_ino];
        file.isFolder = S_ISDIR(status.st_mode);
        if (!file.isFolder)
            file.bytes = ScratchFolder::contents(QFile::decodeName(path));
    };
    add(root);
    for (const auto& entry : fs::recursive_directory_iterator(root.toStdString()))
        add(QByteArray::fromStdString(entry.path().string()));
    return disk;
}

void Disk::layOut() const
{
    for (const auto& entry : fs::directory_iterator(root_.toStdString()))
        fs::remove_all(entry.path());
    QMap<FileId, QByteArray> firstNames;
    const auto all = paths();
    for (const auto& path : all) {
        const FileId id = idOf(path);
        if (isFolder(path))
            fs::create_directory(path.toStdString());
        else if (firstNames.contains(id))
            fs::create_hard_link(firstNames[id].toStdString(), path.toStdString());
        else
            ScratchFolder::write(QFile::decodeName(path), files_[id].bytes);
        firstNames.insert(id, path);
    }
}

void Disk::apply(const Call& call, const Portion& portion)
{
    if (!portion.isThere)
        return;
    switch (call.kind) {
    case Call::Kind::Name:
        if (call.file != 0)
            files_[call.file].isFolder = call.isFolder;
        names_.insert(call.names);
        break;
    case Call::Kind::Resize:
        files_[call.file].bytes = files_[call.file].bytes.leftJustified(call.offset, '\0', true);
        break;
    case Call::Kind::Write: {
        QByteArray& bytes = files_[call.file].bytes;
        bytes = bytes.leftJustified(portion.length, '\0');
        for (const auto& part : portion.parts) {
            const qint64 fitting = std::min(part.length, bytes.size() - call.offset - part.start);
            if (fitting > 0)
                bytes.replace(call.offset + part.start, fitting, call.bytes.mid(part.start, fitting));
        }
        break;
    }
    case Call::Kind::Sync:
    case Call::Kind::Return:
        break;
    }
}

void Disk::applyWhole(const Call& call)
{
    apply(call, {true, {{0, call.bytes.size()}}, call.offset + call.bytes.size()});
}

QList<QByteArray> Disk::paths() const
{
    QList<QByteArray> found;
    QSet<QByteArray> folders{root_};
    // A folder comes before what it holds.
    for (auto name = names_.begin(); name != names_.end(); ++name) {
        const bool isReached = folders.contains(name.key().left(name.key().lastIndexOf('/')));
        if (!isReached || name.value() == 0)
            continue;
        found.append(name.key());
        if (isFolder(name.key()))
            folders.insert(name.key());
    }
    return found;
}

QByteArray Disk::contents(const QByteArray& path) const
{
    return paths().contains(path) && !isFolder(path) ? files_[idOf(path)].bytes : QByteArray();
}

QByteArray Disk::fingerprint() const
{
    QCryptographicHash hash(QCryptographicHash::Md5);
    QMap<FileId, int> order;
    const auto all = paths();
    for (const auto& path : all) {
        const FileId id = idOf(path);
        const bool isKnown = order.contains(id);
        const auto number = order.contains(id) ? order[id] : *order.insert(id, int(order.size()));
        hash.addData(path + '\n' + QByteArray::number(number) + (isFolder(path) ? "/" : "\n"));
        if (!isKnown)
            hash.addData(QByteArray::number(files_[id].bytes.size()) + '\n' + files_[id].bytes);
    }
    return hash.result();
}
