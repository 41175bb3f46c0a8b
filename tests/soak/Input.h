#pragma once

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QPointer>
#include <QTest>
#include <QWidget>
#include <QWindow>

/// Keys, mouse and drops on the way of the window system's own: to windows, past shortcuts and all.
namespace Input {

/// Goes to the window that has the focus; where none has it, to a menu that is open.
inline void key(int code, Qt::KeyboardModifiers modifiers = {}, const QString& text = {})
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        auto* popup = QApplication::activePopupWidget();
        auto* focus = QGuiApplication::focusWindow();
        if (auto* window = focus || !popup ? focus : popup->windowHandle())
            qt_handleKeyEvent(window, type, code, modifiers, text, false, 1);
    }
}

inline void type(const QString& text)
{
    for (const char32_t letter : text.toUcs4())
        key(letter < 0x80 ? QChar(char16_t(letter)).toUpper().unicode() : int(Qt::Key_unknown), {},
            QString::fromUcs4(&letter, 1));
}

inline void mouse(QWidget& widget, const QPoint& place, QEvent::Type type, Qt::MouseButton button = Qt::LeftButton,
                  Qt::KeyboardModifiers modifiers = {})
{
    // So far apart that no two clicks make a double click.
    static unsigned int time = 0;
    time += 1000;
    auto* window = widget.window()->windowHandle();
    const QPoint local = widget.mapTo(widget.window(), place);
    const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
    const auto changed = type == QEvent::MouseMove ? Qt::NoButton : button;
    if (window)
        qt_handleMouseEvent(window, local, window->mapToGlobal(local), held, changed, type, modifiers,
                            static_cast<int>(time));
}

inline void click(QWidget& widget, const QPoint& place, Qt::MouseButton button = Qt::LeftButton,
                  Qt::KeyboardModifiers modifiers = {})
{
    const QPointer<QWidget> receiver(&widget);
    mouse(widget, place, QEvent::MouseButtonPress, button, modifiers);
    if (receiver)
        mouse(widget, place, QEvent::MouseButtonRelease, button, modifiers);
}

inline void click(QWidget& widget)
{
    click(widget, widget.rect().center());
}

/// As it comes from another program.
inline void drop(QWidget& widget, const QMimeData& dropped)
{
    auto* window = widget.window()->windowHandle();
    const QPoint place = widget.mapTo(widget.window(), widget.rect().center());
    QDragEnterEvent enter(place, Qt::CopyAction, &dropped, Qt::LeftButton, {});
    QCoreApplication::sendEvent(window, &enter);
    QDropEvent release(place, Qt::CopyAction, &dropped, Qt::LeftButton, {});
    QCoreApplication::sendEvent(window, &release);
}

} // namespace Input
