#pragma once

#include <QDBusMessage>
#include <QObject>

/// Whether the user prefers a dark or a light appearance, as the desktop portal tells it
/// (`org.freedesktop.appearance` `color-scheme`).
class DBusColourScheme : public QObject {
    Q_OBJECT

public:
    enum class Preference { None, Dark, Light };

    /// Asks the portal; the answer and every later change come by the signal.
    DBusColourScheme();

signals:
    void changed(Preference preference);

private slots:
    // Qt finds no slot with a QDBusVariant.
    void settingChanged(const QDBusMessage& signal);
};
