#pragma once

#include "library/WorkMonitor.h"

#include <QElapsedTimer>

/// Follows the work on a line of the standard error, where that is a terminal and the work takes longer than a second,
/// and stops it after a signal.
class ProgressLine : public WorkMonitor {
public:
    void workBegins(qsizetype count) override;
    bool fileBegins(const QString& path) override;
    void workEnds() override;

    /// Where the files' own lines go to the same terminal, those are progress enough.
    void setQuiet(bool quiet) { isQuiet_ = quiet; }
    /// Makes room for another line; the progress comes back with the next file.
    void clear();

private:
    void show(const QString& path);

    QElapsedTimer sinceStart_;
    QElapsedTimer sinceShown_;
    qsizetype count_ = 0;
    qsizetype begun_ = 0;
    bool isShown_ = false;
    bool isQuiet_ = false;
};
