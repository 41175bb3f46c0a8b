#include "app/HeldEvents.h"

#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>

#include <memory>
#include <utility>

// What Qt Test feeds input with: it takes the way of the window system's own events, past shortcuts and all.
QT_BEGIN_NAMESPACE
// NOLINTBEGIN(readability-redundant-declaration)
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key, Qt::KeyboardModifiers modifiers,
                                    const QString& text, bool isRepeated, ushort count);
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                                      Qt::MouseButtons state, Qt::MouseButton button, QEvent::Type type,
                                      Qt::KeyboardModifiers modifiers, int timestamp);
// NOLINTEND(readability-redundant-declaration)
QT_END_NAMESPACE

namespace {

std::shared_ptr<QMimeData> copied(const QMimeData& source)
{
    auto copy = std::make_shared<QMimeData>();
    for (const auto& format : source.formats())
        copy->setData(format, source.data(format));
    return copy;
}

void drop(QWindow& window, const QMimeData& mimeData, const QPointF& place, Qt::DropActions actions,
          Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers)
{
    QDragEnterEvent enter(place.toPoint(), actions, &mimeData, buttons, modifiers);
    QCoreApplication::sendEvent(&window, &enter);
    QDragMoveEvent move(place.toPoint(), actions, &mimeData, buttons, modifiers);
    QCoreApplication::sendEvent(&window, &move);
    QDropEvent dropped(place, actions, &mimeData, buttons, modifiers);
    QCoreApplication::sendEvent(&window, &dropped);
}

} // namespace

void HeldEvents::processEvents()
{
    qApp->installEventFilter(this);
    QCoreApplication::processEvents();
    qApp->removeEventFilter(this);
}

void HeldEvents::release()
{
    mouseIsLetThrough_ = false;
    for (const auto& held : std::exchange(held_, {})) {
        if (held.window)
            held.happen(*held.window);
    }
}

bool HeldEvents::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        // Accepted, a key is no shortcut; the window gets it as a plain key.
        event->accept();
        return true;
    }
    return watched->isWindowType() && filterInput(*static_cast<QWindow*>(watched), *event);
}

bool HeldEvents::filterInput(QWindow& window, QEvent& event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        holdKey(window, static_cast<const QKeyEvent&>(event));
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return holdMouse(window, static_cast<const QMouseEvent&>(event));
    case QEvent::Wheel:
        hold(window, [copy = std::shared_ptr<QEvent>(event.clone())](QWindow& receiver) {
            QCoreApplication::sendEvent(&receiver, copy.get());
        });
        return true;
    case QEvent::Close:
        event.ignore();
        hold(window, [](QWindow& closed) { closed.close(); });
        return true;
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        holdDrop(window, static_cast<QDropEvent&>(event));
        return true;
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::DragLeave:
        return true;
    default:
        return false;
    }
}

void HeldEvents::holdKey(QWindow& window, const QKeyEvent& event)
{
    if (event.key() == Qt::Key_Escape) {
        if (event.type() == QEvent::KeyPress)
            emit escapePressed();
        return;
    }
    hold(window, [type = event.type(), key = event.key(), modifiers = event.modifiers(), text = event.text(),
                  isRepeated = event.isAutoRepeat()](QWindow& receiver) {
        qt_handleKeyEvent(&receiver, type, key, modifiers, text, isRepeated, 1);
    });
}

bool HeldEvents::holdMouse(QWindow& window, const QMouseEvent& event)
{
    if (event.type() == QEvent::MouseButtonPress)
        mouseIsLetThrough_ = mayUse_(window, event.position().toPoint());
    if (mouseIsLetThrough_ || (event.type() == QEvent::MouseMove && event.buttons() == Qt::NoButton))
        return false;
    // A double click comes of its two presses again.
    if (event.type() == QEvent::MouseButtonDblClick)
        return true;
    hold(window, [type = event.type(), local = event.position(), global = event.globalPosition(),
                  buttons = event.buttons(), button = event.button(), modifiers = event.modifiers(),
                  time = static_cast<int>(event.timestamp())](QWindow& receiver) {
        qt_handleMouseEvent(&receiver, local, global, buttons, button, type, modifiers, time);
    });
    return true;
}

void HeldEvents::holdDrop(QWindow& window, QDropEvent& event)
{
    event.acceptProposedAction();
    if (event.type() != QEvent::Drop)
        return;
    hold(window, [mimeData = copied(*event.mimeData()), place = event.position(), actions = event.possibleActions(),
                  buttons = event.buttons(), modifiers = event.modifiers()](QWindow& receiver) {
        drop(receiver, *mimeData, place, actions, buttons, modifiers);
    });
}

void HeldEvents::hold(QWindow& window, std::function<void(QWindow&)> happen)
{
    held_.push_back({&window, std::move(happen)});
}
