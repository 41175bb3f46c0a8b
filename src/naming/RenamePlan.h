#pragma once

#include "model/AudioFile.h"

#include <QString>
#include <QStringList>

#include <vector>

/// What renaming would do, as far as it can be told before. It only informs: files may come and go until then.
class RenamePlan {
public:
    struct Entry {
        QString oldName;
        QString newName;
        /// Why the file can't be renamed so, in the user's language; empty when it can.
        QString objection;
        /// What is worth knowing of a new name that the file can get, in the user's language; mostly empty.
        QString remark;
        bool isUnchanged() const { return objection.isEmpty() && oldName == newName; }
    };

    RenamePlan() = default;
    /// @param records in the order in which they would be renamed.
    RenamePlan(const std::vector<AudioFilePtr>& records, const QStringList& format);

    const std::vector<Entry>& entries() const { return entries_; }
    int failing() const { return failing_; }
    int unchanged() const { return unchanged_; }

private:
    std::vector<Entry> entries_;
    int failing_ = 0;
    int unchanged_ = 0;
};
