#pragma once

#include <QByteArray>
#include <QImage>
#include <QObject>
#include <QSize>
#include <QThreadPool>

#include <optional>

/// Decodes pictures on a thread of its own, one at a time. Only the last one wanted counts: wishes that come while
/// one is decoded replace each other, and what they replaced is not announced.
class PictureDecoder : public QObject {
    Q_OBJECT

public:
    PictureDecoder();
    ~PictureDecoder() override;

    /// Wants the picture scaled down to fit into @p within (see Picture::decode).
    void decode(const QByteArray& bytes, const QSize& within);
    /// Wants nothing any more.
    void cancel();

signals:
    /// A null image when the picture can't be decoded.
    void decoded(const QImage& picture);

private:
    struct Wish {
        QByteArray bytes;
        QSize within;
    };

    void start();
    void finish(const QImage& picture);

    QThreadPool worker_;
    std::optional<Wish> wish_;
    bool isBusy_ = false;
    bool isStale_ = false;
};
