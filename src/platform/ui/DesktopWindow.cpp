#include "platform/ui/DesktopWindow.h"

#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

namespace {

class BackgroundMover : public QObject {
public:
    explicit BackgroundMover(QWidget& window) : QObject(&window) { window.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool isPress = event->type() == QEvent::MouseButtonPress;
        return isPress && moves(*qobject_cast<QWidget*>(watched), *static_cast<QMouseEvent*>(event));
    }

private:
    static bool moves(const QWidget& window, const QMouseEvent& press)
    {
        // What is disabled only lets the press through.
        const QWidget* pressed = window.childAt(press.position().toPoint());
        const bool isBackground = !pressed || pressed->isEnabled();
        return isBackground && press.button() == Qt::LeftButton && window.windowHandle()
               && window.windowHandle()->startSystemMove();
    }
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
