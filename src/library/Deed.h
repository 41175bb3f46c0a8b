#pragma once

#include <QString>

/// What a command has done to the files that it was for.
struct Deed {
    enum class Kind { TracksNumbered, UnsupportedTagsRemoved, AllTagsRemoved, ArtSet, ArtDeleted };

    Kind kind{};
    /// The number of files that it was for; those that have nothing for it to change are not among them.
    qsizetype wanted = 0;
    /// In how many of these it was done. The rest failed, or were not reached when the work was stopped.
    qsizetype done = 0;

    /// In the user's language: "Tags removed from 8 files", "Tags removed from 7 of 8 files".
    QString text() const;
};
