#pragma once

#include <QString>

#include <stdexcept>

/// Gives a file another name, which may lead into a folder below its own and never leads out of it.
namespace FileMove {

/// Thrown for a name that leads out of the folder.
class LeadsOut : public std::runtime_error {
public:
    LeadsOut() : runtime_error("The name leads out of the folder") {}
};

/// Whether a name that is looked up in @p folder leads, or may lead, out of it: it begins with "/", has a component "."
/// or "..", or goes through a link to a folder that lies elsewhere. A folder that can't be reached leads nowhere.
bool leadsOut(const QString& folder, const QString& name);

/// Renames a file without ever replacing another one. A name that differs from the old one only in case is not taken for
/// another file where the file system does not tell them apart. The own name again does nothing.
///
/// The new name is looked up in the folder as it is at that moment, and nothing that is put in its way from then on
/// changes where the file goes.
///
/// It is one step where the file system can refuse to replace. Elsewhere a kill in the middle leaves the file under the
/// old name, or under both where it can have two; never under none. What remains there: on a file system with second
/// names, a file that another program puts under the old name in the same moment is removed; on one without, as exFAT
/// outside of the kernel, a file that another program makes under the new name in the moment between the look and the
/// move is replaced. Our own programs wait for each other there.
///
/// @param folder ends in "/", or is empty for the current one. @param oldName, newName are looked up in it.
/// Throws LeadsOut, and std::system_error when it can't be done otherwise; nothing was moved then.
void move(const QString& folder, const QString& oldName, const QString& newName);

} // namespace FileMove
