#pragma once

#include <QByteArray>
#include <QMimeData>
#include <QString>
#include <QStringList>

#include <optional>

/// What a drag or the clipboard carries, reduced to what Sonvika takes: local files, and encoded data that has no file.
namespace DroppedData {

/// Encoded data without a file.
struct Data {
    QByteArray bytes;
    /// A name for the file to make of it, with the extension that belongs to the data.
    QString fileName;
};

/// The local files, in their order.
QStringList localFiles(const QMimeData& data);

/// The local files whose MIME type, by name or content, is one of @p mimeTypes.
QStringList localFilesOfType(const QMimeData& data, const QStringList& mimeTypes);

/// Whether data of one of the types is on offer, without asking the source for it.
bool offersData(const QMimeData& data, const QStringList& mimeTypes);

/// The encoded data of one of the types that the source names first, unchanged: offered as such or in a `data:`
/// address. Other addresses are not followed.
/// @return none when there is none, or the source does not deliver it.
std::optional<Data> readData(const QMimeData& data, const QStringList& mimeTypes);

} // namespace DroppedData
