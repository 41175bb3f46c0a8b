#pragma once

#include <QDBusAbstractAdaptor>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

/// The one running program of a user, as others on the session bus see it (`org.freedesktop.Application`).
class DBusApplication : public QObject {
    Q_OBJECT

public:
    enum class Role {
        First,  ///< this process is it now
        Second, ///< another process is it already
        Alone   ///< there is no bus to ask
    };

    static const QString name;

    /// Waits a second at most.
    Role claim();

    /// Hands files to the first process, or only calls it to the front when there are none. Waits a second at most; a
    /// process that is busy takes them later. @return false when nobody could take them.
    static bool handOver(const QStringList& paths);

signals:
    /// Another start wants the program in front.
    void activationWanted();
    /// Files and folders were handed over, in one batch.
    void opened(const QStringList& paths);
};

/// The interface itself.
class DBusApplicationAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit DBusApplicationAdaptor(DBusApplication& application);

public slots:
    // NOLINTBEGIN(readability-identifier-naming): the interface names them.
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& actionName, const QVariantList& parameter, const QVariantMap& platformData);
    // NOLINTEND(readability-identifier-naming)

private:
    DBusApplication& application_;
};
