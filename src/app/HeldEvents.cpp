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
    // An image may be offered without bytes.
    if (source.hasImage())
        copy->setImageData(source.imageData());
    return copy;
}

void drop(QWindow& window, const QMimeData& mimeData, const QPointF& place, Qt::MouseButtons buttons,
          Qt::KeyboardModifiers modifiers)
{
    constexpr Qt::DropActions actions = Qt::CopyAction;
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
    isProcessing_ = true;
    QCoreApplication::processEvents();
    isProcessing_ = false;
    if (!escapeIsDown_)
        qApp->removeEventFilter(this);
}

void HeldEvents::release()
{
    mouseIsLetThrough_ = false;
    // One may open a menu, and wait in it for what comes next.
    for (auto& happen : std::exchange(held_, {}))
        QMetaObject::invokeMethod(this, std::move(happen), Qt::QueuedConnection);
}

bool HeldEvents::eventFilter(QObject* watched, QEvent* event)
{
    return isProcessing_ ? filterWhileProcessing(*watched, *event) : filterEscape(*event);
}

bool HeldEvents::filterEscape(const QEvent& event)
{
    const bool isKey = event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease
                       || event.type() == QEvent::ShortcutOverride;
    if (!isKey)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    const bool isRepeat = key.key() == Qt::Key_Escape && key.isAutoRepeat();
    if (!isRepeat) {
        escapeIsDown_ = false;
        qApp->removeEventFilter(this);
    }
    return isRepeat;
}

bool HeldEvents::filterWhileProcessing(QObject& watched, QEvent& event)
{
    if (event.type() == QEvent::ShortcutOverride) {
        // Accepted, a key is no shortcut; the window gets it as a plain key.
        event.accept();
        return true;
    }
    if (event.type() == QEvent::InputMethod) {
        holdCopy(watched, event);
        return true;
    }
    return watched.isWindowType() && filterInput(static_cast<QWindow&>(watched), event);
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
    case QEvent::ContextMenu:
        holdCopy(window, event);
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
        // Ignored, it comes as the mouse.
        event.ignore();
        return true;
    default:
        return false;
    }
}

void HeldEvents::holdKey(QWindow& window, const QKeyEvent& event)
{
    if (event.key() == Qt::Key_Escape) {
        escapeIsDown_ = event.type() == QEvent::KeyPress || event.isAutoRepeat();
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
    // A double click comes of its two presses again. A drag can't be done afterwards: the button is up by then.
    if (event.type() == QEvent::MouseButtonDblClick || event.type() == QEvent::MouseMove)
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
    // What comes from outside is only ever copied.
    const bool isWelcome = !event.source() && event.possibleActions().testFlag(Qt::CopyAction);
    event.setDropAction(Qt::CopyAction);
    event.setAccepted(isWelcome);
    if (event.type() != QEvent::Drop || !isWelcome)
        return;
    hold(window, [mimeData = copied(*event.mimeData()), place = event.position(), buttons = event.buttons(),
                  modifiers = event.modifiers()](QWindow& receiver) {
        drop(receiver, *mimeData, place, buttons, modifiers);
    });
}

void HeldEvents::holdCopy(QObject& receiver, const QEvent& event)
{
    held_.emplace_back([object = QPointer<QObject>(&receiver), copy = std::shared_ptr<QEvent>(event.clone())] {
        if (object)
            QCoreApplication::sendEvent(object, copy.get());
    });
}

void HeldEvents::hold(QWindow& window, std::function<void(QWindow&)> happen)
{
    held_.emplace_back([receiver = QPointer<QWindow>(&window), act = std::move(happen)] {
        if (receiver)
            act(*receiver);
    });
}
