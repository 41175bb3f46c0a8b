#include "cli/RecoverCommand.h"

#include "cli/ErrorLines.h"
#include "cli/FileReport.h"
#include "cli/Printable.h"
#include "cli/StandardOutput.h"
#include "platform/PathBytes.h"
#include "tagengine/InterruptedChange.h"
#include "tagengine/TaglibWrapper.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {

using Changes = QList<InterruptedChange>;

/// The reason for programs.
QString keyword(InterruptedChange::Reason reason)
{
    using Reason = InterruptedChange::Reason;
    switch (reason) {
    case Reason::Missing:
        return QStringLiteral("missing");
    case Reason::OtherVolume:
        return QStringLiteral("other-volume");
    case Reason::Different:
        return QStringLiteral("different");
    case Reason::Unreadable:
        return QStringLiteral("unreadable");
    case Reason::InUse:
        return QStringLiteral("in-use");
    }
    return {};
}

QByteArray toJson(const Changes& changes)
{
    QJsonArray list;
    for (const auto& change : changes) {
        QJsonObject object = pathMembers(change.path);
        object.insert(QStringLiteral("id"), change.id);
        object.insert(QStringLiteral("reason"), keyword(change.reason));
        list.append(object);
    }
    return QJsonDocument(list).toJson(QJsonDocument::Compact) + '\n';
}

QByteArray toText(const Changes& changes)
{
    QByteArray text;
    for (const auto& change : changes)
        text += change.id.toUtf8() + '\t' + change.reasonText().toUtf8() + '\t'
                + PathBytes::encode(Printable::line(change.path)) + '\n';
    return text;
}

/// @return false when it could not be taken; the engine may know why.
bool takeWayOut(CommandLine::WayOut wayOut, const QString& id, StandardOutput& output)
{
    if (wayOut == CommandLine::WayOut::Forget)
        return InterruptedChanges::forget(id);
    const auto copy = InterruptedChanges::restoreCopy(id);
    if (copy)
        output.write(PathBytes::encode(Printable::line(*copy)) + '\n');
    return copy.has_value();
}

QString failureReason()
{
    const QString reason = TaglibWrapper::failureReason();
    return reason.isEmpty() ? QStringLiteral("The change could not be forgotten") : reason;
}

} // namespace

bool RecoverCommand::run(const CommandLine& line, StandardOutput& output, ErrorLines& errors)
{
    const Changes left = InterruptedChanges::recover();
    if (line.wayOut == CommandLine::WayOut::None) {
        output.write(line.json ? toJson(left) : toText(left));
        return left.isEmpty();
    }
    for (const auto& id : line.ids) {
        const bool isLeft =
            std::any_of(left.begin(), left.end(), [&](const InterruptedChange& change) { return change.id == id; });
        if (!isLeft)
            errors.report(id, QStringLiteral("No such change is left"));
        else if (!takeWayOut(line.wayOut, id, output))
            errors.report(id, failureReason());
    }
    return true;
}
