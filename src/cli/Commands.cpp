#include "cli/Commands.h"

#include "artwork/ImageFile.h"
#include "cli/ArtOutput.h"
#include "cli/FileReport.h"
#include "cli/InputFiles.h"
#include "cli/Printable.h"
#include "cli/RecoverCommand.h"
#include "cli/StopSignals.h"
#include "library/ArrayController.h"
#include "library/BatchCommands.h"
#include "library/TagWriter.h"
#include "naming/FileNameFormat.h"
#include "naming/FileRenamer.h"
#include "naming/RenamePlan.h"
#include "platform/PathBytes.h"
#include "platform/UserDefaults.h"
#include "sandbox/BookmarksManager.h"
#include "sandbox/OpenPanelManager.h"
#include "sandbox/PermissionManager.h"
#include "tagengine/InterruptedChange.h"
#include "tagengine/TaglibWrapper.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <new>
#include <numeric>
#include <system_error>

namespace {

using Command = CommandLine::Command;

/// The kinds of file that the engine tells apart, under all their extensions.
bool isServed(const QString& type)
{
    static const QStringList types{QStringLiteral("mp3"), QStringLiteral("m4a"), QStringLiteral("wav"),
                                   QStringLiteral("aif"), QStringLiteral("aiff")};
    return types.contains(type);
}

/// There is nobody to ask for access.
class NoPanel : public OpenPanelManagerProtocol {
public:
    QString requestAccess(const QString&) override { throw std::system_error(EACCES, std::generic_category()); }
};

QByteArray printable(const QString& text)
{
    return PathBytes::encode(Printable::line(text));
}

/// The remark is set off by a tab, which no printable name has.
QByteArray plannedLine(const QString& path, const QString& newPath, const QString& remark)
{
    const QByteArray names = printable(path + QStringLiteral(" -> ") + newPath);
    return names + (remark.isEmpty() ? QByteArray() : '\t' + printable(remark)) + '\n';
}

} // namespace

Commands::Commands(const CommandLine& line) : line_(line)
{
    errors_.beforeLine = [this] { progress_.clear(); };
    const bool tellsFiles = line.command == Command::Show || line.command == Command::Type || line.dryRun;
    progress_.setQuiet(tellsFiles && StandardOutput::isTerminal());
}

int Commands::run()
{
    if (line_.command == Command::Recover) {
        const bool isAllWell = RecoverCommand::run(line_, output_, errors_);
        return std::max(exitStatus(), isAllWell ? 0 : 1);
    }
    InterruptedChanges::Search search;
    const QStringList files =
        takesOneFile() ? line_.files : InputFiles::expand(line_.files, line_.fileLists, errors_);
    StopSignals::note();
    perform(files);
    const int status = exitStatus();
    if (!isToStop())
        tellInterruptedChanges(search);
    return status;
}

void Commands::tellInterruptedChanges(InterruptedChanges::Search& search)
{
    constexpr std::chrono::milliseconds patience(200);
    auto left = search.wait(patience).value_or(QList<InterruptedChange>());
    const auto isInUse = [](const auto& change) { return change.reason == InterruptedChange::Reason::InUse; };
    // The user may have been this command.
    if (std::any_of(left.begin(), left.end(), isInUse))
        left = InterruptedChanges::Search().wait(patience).value_or(QList<InterruptedChange>());
    for (const auto& change : left)
        errors_.report(change.path, QStringLiteral("an interrupted change could not be taken back: %1 (see "
                                                   "sonvika-cli recover)")
                                        .arg(change.reasonText()));
}

bool Commands::takesOneFile() const
{
    return line_.command == Command::ArtGet || line_.command == Command::ChaptersGet
           || line_.command == Command::ChaptersSet;
}

void Commands::perform(const QStringList& files)
{
    switch (line_.command) {
    case Command::Show:
        return show(files);
    case Command::Type:
        return forEach(files, [this](const QString& path) { showType(path); });
    case Command::ArtGet:
        return forEach(files, [this](const QString& path) { getArt(path); });
    case Command::ArtSet:
        return setArt(files);
    case Command::ArtRemove:
        return forEach(files, [this](const QString& path) { removeArt(path); });
    case Command::ChaptersGet:
        return forEach(files, [this](const QString& path) { getChapters(path); });
    case Command::ChaptersSet:
        return forEach(files, [this](const QString& path) { setChapters(path); });
    default:
        return changeRecords(files);
    }
}

void Commands::forEach(const QStringList& files, const std::function<void(const QString& path)>& work)
{
    WorkLoop::run(progress_, files, [&](const QString& path) {
        try {
            if (output_.error() == 0)
                work(path);
        } catch (const std::bad_alloc&) {
            errors_.report(path, qt_error_string(ENOMEM));
        }
    });
}

void Commands::show(const QStringList& files)
{
    const bool inColour =
        StandardOutput::isTerminal() && qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb";
    // Every piece ends a line, as other lines may go to the same terminal.
    QByteArray separator = line_.json ? "[\n" : "";
    forEach(files, [&](const QString& path) {
        const auto report = FileReport::read(path);
        if (!report) {
            errors_.report(path, TaglibWrapper::failureReason());
            return;
        }
        output_.write(separator + (line_.json ? report->toJson() + '\n' : report->toText(inColour)));
        separator = line_.json ? "," : "\n";
    });
    if (line_.json)
        output_.write(separator.startsWith('[') ? "[]\n" : "]\n");
}

void Commands::showType(const QString& path)
{
    const auto type = line_.content ? TaglibWrapper::detectStreamType(path) : TaglibWrapper::detectFileType(path);
    if (type)
        output_.write(printable(path + QStringLiteral(": ") + *type) + '\n');
    else
        errors_.report(path, TaglibWrapper::failureReason());
}

void Commands::changeRecords(const QStringList& files)
{
    ArrayController list;
    {
        const ArrayController::AddingBatch batch(list);
        forEach(files, [&](const QString& path) {
            const QString type = TaglibWrapper::detectFileType(path).value_or(QString());
            const AudioFilePtr record = isServed(type) ? AudioFile::fromFile(path) : nullptr;
            if (record) {
                record->fileType = type;
                list.addObject(record);
            } else {
                errors_.report(path, isServed(type) ? TaglibWrapper::failureReason()
                                                    : QStringLiteral("Unsupported file type"));
            }
        });
    }
    if (isToStop())
        return;
    QList<int> rows(list.rowCount());
    std::iota(rows.begin(), rows.end(), 0);
    list.selection().setRows(rows);
    if (line_.command == Command::Rename)
        return rename(list);
    TagWriter writer(errors_);
    BatchCommands batch(list, writer, errors_, progress_);
    if (line_.command == Command::Set)
        FieldEditor(list, writer, progress_).applyEdits(line_.edits);
    else if (line_.command == Command::Number)
        batch.incrementTrackNumbers();
    else if (line_.command == Command::StripUnsupported)
        batch.removeUnsupportedTags();
    else
        batch.removeAllTags();
}

void Commands::rename(ArrayController& list)
{
    UserDefaults defaults;
    const QStringList format = line_.tokens.isEmpty() ? FileNameFormat::storedTokens(defaults) : line_.tokens;
    if (!line_.dryRun) {
        NoPanel panel;
        BookmarksManager bookmarks(defaults);
        PermissionManager permissions(panel, bookmarks);
        FileRenamer(list, permissions, errors_, progress_).renameFiles(list.selectedObjects(), format);
        return;
    }
    const auto& records = list.arrangedObjects();
    const RenamePlan plan(records, format);
    for (std::size_t at = 0; at < records.size(); ++at) {
        const auto& entry = plan.entries()[at];
        const QString& path = records[at]->path;
        const QString newPath = FileRenamer::folderOf(*records[at]) + entry.newName;
        if (!entry.objection.isEmpty())
            errors_.report(path, entry.objection);
        else
            output_.write(plannedLine(path, newPath, entry.remark));
    }
}

void Commands::getArt(const QString& path)
{
    const QString objection = ArtOutput::write(path, line_, output_);
    if (!objection.isEmpty())
        errors_.report(path, objection);
}

void Commands::setArt(const QStringList& files)
{
    const ImageFile image = ImageFile::read(line_.image);
    if (!image.error.isEmpty()) {
        errors_.report(line_.image, image.error);
        return;
    }
    forEach(files, [&](const QString& path) {
        const QString type = TaglibWrapper::detectFileType(path).value_or(QString());
        if (!TaglibWrapper::setImageData(image.bytes, path, type))
            errors_.report(path, TaglibWrapper::failureReason());
    });
}

void Commands::removeArt(const QString& path)
{
    const QString type = TaglibWrapper::detectFileType(path).value_or(QString());
    if (!TaglibWrapper::setImageData({}, path, type))
        errors_.report(path, TaglibWrapper::failureReason());
}

void Commands::getChapters(const QString& path)
{
    const auto texts = TaglibWrapper::getChapters(path);
    if (!texts) {
        errors_.report(path, TaglibWrapper::failureReason());
        return;
    }
    const QList<Chapter> chapters = Chapter::fromTexts(*texts);
    if (line_.json) {
        output_.write(QJsonDocument(toJson(chapters)).toJson(QJsonDocument::Compact) + '\n');
        return;
    }
    for (const auto& chapter : chapters)
        output_.write(QByteArray::number(chapter.startMs) + '\t' + Printable::line(chapter.title).toUtf8() + '\n');
}

void Commands::setChapters(const QString& path)
{
    if (!TaglibWrapper::setChapters(path, line_.chapters))
        errors_.report(path, TaglibWrapper::failureReason());
}

bool Commands::isToStop()
{
    return StopSignals::received() != 0;
}

int Commands::exitStatus()
{
    constexpr int signalBase = 128;
    output_.flush();
    const int error = output_.error();
    // Whoever closed a pipe has seen enough.
    if (error != 0 && error != EPIPE)
        errors_.report(QStringLiteral("standard output"), qt_error_string(error));
    if (isToStop())
        return signalBase + StopSignals::received();
    return error != 0 || errors_.count() > 0 ? 1 : 0;
}
