#include "platform/ui/DesktopWindow.h"

#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

#include <utility>

namespace {

class BackgroundMover : public QObject {
public:
    explicit BackgroundMover(QWidget& window) : QObject(&window) { window.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto& window = *qobject_cast<QWidget*>(watched);
        if (event->type() == QEvent::MouseButtonPress)
            isHeld_ = isOnBackground(window, *static_cast<QMouseEvent*>(event));
        else if (event->type() == QEvent::MouseButtonRelease)
            isHeld_ = false;
        // With the press alone, one that is told of late could begin a move when the button is up again.
        return event->type() == QEvent::MouseMove && std::exchange(isHeld_, false) && window.windowHandle()
               && window.windowHandle()->startSystemMove();
    }

private:
    static bool isOnBackground(const QWidget& window, const QMouseEvent& press)
    {
        // What is disabled only lets the press through.
        const QWidget* pressed = window.childAt(press.position().toPoint());
        return press.button() == Qt::LeftButton && (!pressed || pressed->isEnabled());
    }

    bool isHeld_ = false;
};

} // namespace

void DesktopWindow::bringToFront(QWidget& window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

void DesktopWindow::moveByBackground(QWidget& window)
{
    new BackgroundMover(window);
}
