#include "artwork/ImageFormats.h"
#include "cli/PictureConverter.h"
#include "model/Picture.h"

#include <QObject>

class PicturePlugin : public QObject, public PictureConverter {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.sonvika.PictureConverter/1")
    Q_INTERFACES(PictureConverter)

public:
    std::optional<QByteArray> convert(const QByteArray& bytes, const QString& extension) override
    {
        return ImageFormats::encode(Picture::decode(bytes), ImageFormats::indexForExtension(extension));
    }
};

#include "PicturePlugin.moc"
