#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QThreadPool>

#include <functional>

/// Receives dropped data that has no file: it becomes a file in the folder "Drops" of the program's temporary folder,
/// where it stays.
class DropFolder : public QObject {
    Q_OBJECT

public:
    /// Told the path of the received file, or why there is none (then the path is empty).
    using Received = std::function<void(const QString& path, const QString& error)>;

    /// Calls what it is given, at once or later.
    using Delivery = std::function<void(std::function<void()> deliver)>;

    DropFolder();
    ~DropFolder() override;

    /// The folder, made on first use, readable by the user alone. A failure to make it shows when files are received.
    QString destinationURL();

    /// Writes the bytes into a new file, on the work queue. @p received is called on the thread of this object.
    /// @param fileName the name to give the file; a number is added when it is taken.
    void receive(const QByteArray& bytes, const QString& fileName, Received received);

    /// Lets somebody else choose the moment at which received files are told of.
    void setDelivery(Delivery delivery) { delivery_ = std::move(delivery); }

private:
    QThreadPool workQueue_;
    QString destination_;
    Delivery delivery_ = [](const std::function<void()>& deliver) { deliver(); };
};
