#pragma once

#include "app/HeldEvents.h"
#include "library/WorkMonitor.h"

#include <QElapsedTimer>
#include <QObject>

#include <functional>
#include <vector>

/// Lets the user see work that takes longer than a moment, and cancel it between two files. All else that the user
/// does meanwhile waits until the work has ended.
class LongWork : public QObject, public WorkMonitor {
    Q_OBJECT

public:
    static constexpr int patienceMilliseconds = 300;
    static constexpr int intervalMilliseconds = 80;

    LongWork();

    /// @param mayUse tells where the mouse may be used while the work goes on: where it can be canceled.
    void setMayUse(HeldEvents::MayUse mayUse) { mayUse_ = std::move(mayUse); }

    void filesWillChange() override;
    void workBegins(qsizetype count) override;
    bool fileBegins(const QString& path) override;
    void workEnds() override;

    bool isWorking() const { return depth_ > 0; }
    /// Stops the work before the next file.
    void cancel() { canceled_ = true; }
    /// Stops it, and forgets what the user wanted to do after it.
    void abandon();
    /// Does it now or, while work goes on, when that has ended.
    void whenIdle(std::function<void()> action);

signals:
    /// Work that changes files is about to begin; what is pending should be brought to its end.
    void aboutToBegin();
    /// The work takes longer than a moment; sent again and again.
    /// @param done the number of files that are done.
    void advanced(qsizetype done, qsizetype count, const QString& path);
    void ended();
    /// The work was canceled after so many files.
    void stopped(qsizetype done, qsizetype count);

private:
    void runWaiting();

    HeldEvents::MayUse mayUse_;
    HeldEvents events_;
    std::vector<std::function<void()>> waiting_;
    QElapsedTimer sinceStart_;
    QElapsedTimer sinceShown_;
    int depth_ = 0;
    qsizetype begun_ = 0;
    qsizetype count_ = 0;
    bool canceled_ = false;
    bool isShown_ = false;
};
