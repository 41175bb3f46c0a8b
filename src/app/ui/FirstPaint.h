#pragma once

#include <QEvent>
#include <QWidget>

#include <functional>
#include <utility>

/// Does once, when a widget has been painted for the first time, what would keep it from being painted sooner.
class FirstPaint : public QObject {
public:
    static void then(QWidget& widget, std::function<void()> action)
    {
        widget.installEventFilter(new FirstPaint(widget, std::move(action)));
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            QMetaObject::invokeMethod(watched, std::move(action_), Qt::QueuedConnection);
            deleteLater();
        }
        return false;
    }

private:
    FirstPaint(QWidget& widget, std::function<void()> action) : QObject(&widget), action_(std::move(action)) {}

    std::function<void()> action_;
};
