#pragma once

#include <QByteArray>
#include <QString>
#include <QtPlugin>

#include <optional>

/// Re-encodes pictures. A plug-in, as only few calls of the command line need the picture libraries, which take longer
/// to load than most commands take to run.
class PictureConverter {
public:
    virtual ~PictureConverter() = default;

    /// @param extension one of the ImageFormats.
    /// @return none when the picture can't be decoded, is too large to be, or can't be encoded.
    virtual std::optional<QByteArray> convert(const QByteArray& bytes, const QString& extension) = 0;
};

Q_DECLARE_INTERFACE(PictureConverter, "org.sonvika.PictureConverter/1")
