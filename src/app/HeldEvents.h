#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>

#include <functional>
#include <vector>

class QDropEvent;
class QKeyEvent;
class QMouseEvent;

/// Holds back what the user does, while the events of the program are processed in the middle of its work, and lets it
/// happen afterwards in the same order: keys, mouse, wheel, drops and the closing of windows. Painting goes on.
class HeldEvents : public QObject {
    Q_OBJECT

public:
    /// Whether the mouse may be used at this place of a window.
    using MayUse = std::function<bool(const QWindow& window, const QPoint& place)>;
    explicit HeldEvents(MayUse mayUse) : mayUse_(std::move(mayUse)) {}

    /// Processes the events that are there.
    void processEvents();
    bool isHolding() const { return !held_.empty(); }
    /// Lets everything happen that was held back, in turn, as the event loop is reached again.
    void release();
    /// Forgets what was held back.
    void forget() { held_.clear(); }

signals:
    void escapePressed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool filterWhileProcessing(QObject& watched, QEvent& event);
    bool filterInput(QWindow& window, QEvent& event);
    bool filterEscape(const QEvent& event);
    void holdCopy(QObject& receiver, const QEvent& event);
    void holdKey(QWindow& window, const QKeyEvent& event);
    bool holdMouse(QWindow& window, const QMouseEvent& event);
    void holdDrop(QWindow& window, QDropEvent& event);
    void hold(QWindow& window, std::function<void(QWindow&)> happen);

    MayUse mayUse_;
    std::vector<std::function<void()>> held_;
    bool isProcessing_ = false;
    bool mouseIsLetThrough_ = false;
    /// Escape was pressed, and its key has not come up again: it goes on repeating.
    bool escapeIsDown_ = false;
};
