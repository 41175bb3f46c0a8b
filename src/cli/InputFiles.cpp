#include "cli/InputFiles.h"

#include "cli/ErrorLines.h"
#include "library/FileFinder.h"
#include "platform/FileSystem.h"
#include "platform/PathBytes.h"

#include <QFile>
#include <QHash>
#include <QSet>

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace {

const QLatin1String standardInput("-");

class Expansion {
public:
    explicit Expansion(ErrorLines& errors) : errors_(errors) {}

    void addOperand(const QString& operand)
    {
        if (operand == standardInput)
            addList(operand);
        else
            addName(operand);
    }

    void addList(const QString& path)
    {
        for (const auto& name : readNames(path))
            addName(PathBytes::decode(name));
    }

    const QStringList& files() const { return files_; }

private:
    void addName(const QString& path)
    {
        try {
            FileSystem::checkResourceIsReachable(path);
        } catch (const std::system_error& error) {
            errors_.report(path, qt_error_string(error.code().value()));
            return;
        }
        if (!FileSystem::isFolder(path)) {
            addFile(path);
            return;
        }
        const auto report = [this](const QString& skipped, const QString& reason) {
            errors_.report(skipped, reason);
        };
        for (const auto& file : FileFinder::audioFilesBelow(path, report))
            addFile(file);
    }

    void addFile(const QString& path)
    {
        const auto slash = path.lastIndexOf(QLatin1Char('/'));
        const QByteArray name = PathBytes::encode(path.mid(slash + 1));
        const QByteArray spelling = realFolder(path.left(slash + 1)) + '/' + name;
        if (known_.contains(spelling))
            return;
        known_.insert(spelling);
        files_.append(path);
    }

    /// The folder with every link followed.
    QByteArray realFolder(const QString& folder)
    {
        QByteArray& real = realFolders_[folder];
        if (real.isEmpty()) {
            const QByteArray name = folder.isEmpty() ? QByteArray(".") : PathBytes::encode(folder);
            real = FileSystem::realPath(name);
            if (real.isEmpty())
                real = name;
        }
        return real;
    }

    QList<QByteArray> readNames(const QString& path)
    {
        const bool isInput = path == standardInput;
        const int descriptor =
            isInput ? STDIN_FILENO : ::open(PathBytes::encode(path).constData(), O_RDONLY | O_CLOEXEC);
        if (descriptor < 0) {
            errors_.report(path, qt_error_string(errno));
            return {};
        }
        QFile file;
        const bool isOpen = file.open(descriptor, QIODevice::ReadOnly,
                                      isInput ? QFileDevice::DontCloseHandle : QFileDevice::AutoCloseHandle);
        const QByteArray content = file.readAll();
        if (!isOpen || file.error() != QFile::NoError) {
            errors_.report(path, file.errorString());
            return {};
        }
        QList<QByteArray> names = content.split(content.contains('\0') ? '\0' : '\n');
        names.removeAll(QByteArray());
        return names;
    }

    ErrorLines& errors_;
    QStringList files_;
    QSet<QByteArray> known_;
    QHash<QString, QByteArray> realFolders_;
};

} // namespace

QStringList InputFiles::expand(const QStringList& operands, const QStringList& lists, ErrorLines& errors)
{
    Expansion expansion(errors);
    for (const auto& operand : operands)
        expansion.addOperand(operand);
    for (const auto& list : lists)
        expansion.addList(list);
    return expansion.files();
}
