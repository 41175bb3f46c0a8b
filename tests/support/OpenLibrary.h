#pragma once

#include "fakes/Library.h"
#include "tagengine/TaglibWrapper.h"

/// The program without its window, with copies of test data open.
struct OpenLibrary : Library {
    /// @param names those of the copies, and of the test data unless all are copies of @p fixture.
    explicit OpenLibrary(const QString& names, const QString& fixture = {})
    {
        for (const auto& name : names.split(u' '))
            open(fixture.isEmpty() ? name : fixture + name.right(4), name);
    }

    QString fileNames() const
    {
        QStringList names;
        for (const auto& record : list.content())
            names.append(record->fileName);
        return names.join(u' ');
    }
    /// The cover art in the files.
    QList<QByteArray> arts() const
    {
        QList<QByteArray> found;
        for (const auto& record : list.content())
            found.append(TaglibWrapper::getImageData(record->path, record->fileType).value_or(QByteArray()));
        return found;
    }
};
