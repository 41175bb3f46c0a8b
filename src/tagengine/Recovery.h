#pragma once

#include "tagengine/FileIdentity.h"
#include "tagengine/InterruptedChange.h"

#include <QByteArray>

#include <optional>

/// Brings files back from changes that did not come to their end, where their undo records prove that they are nothing
/// else.
namespace Recovery {

enum class Outcome {
    Done,   ///< no record is in force for that file any more
    Kept,   ///< one is, but the file is not what its change can have left; it was not touched
    Failed, ///< one is, and it could not be read or followed
    Busy    ///< one is, and another process is making that change
};

/// Looks after one file. Waits a short while for a change that another process is making at this moment.
/// @param path absolute. @param identity of the file there. @return Done at once where no record speaks of it.
Outcome recover(const QByteArray& path, const FileIdentity& identity);

/// Looks after all files; never waits for another process. Records of changes that are under way are left out.
/// @return what was kept.
QList<InterruptedChange> recoverAll();

/// Writes what the file was before the change, as far as is known, beside it (see InterruptedChanges::restoreCopy).
std::optional<QByteArray> restoreCopy(const QString& id);
bool forget(const QString& id);

} // namespace Recovery
