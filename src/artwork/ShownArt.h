#pragma once

#include <QByteArray>
#include <QObject>

/// The cover art that the well shows, as encoded bytes.
class ShownArt : public QObject {
    Q_OBJECT

public:
    /// Empty when nothing is shown.
    const QByteArray& bytes() const { return bytes_; }
    /// False also for bytes that are no picture.
    bool isShown() const { return isPicture_; }

    /// Shows a picture; empty bytes clear the well.
    void show(const QByteArray& bytes);
    /// The same for a picture that a command has just written: it fades in.
    void put(const QByteArray& bytes);

signals:
    void changed();
    void fadeInWanted();

private:
    QByteArray bytes_;
    bool isPicture_ = false;
};
