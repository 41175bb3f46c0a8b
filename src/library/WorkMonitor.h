#pragma once

#include "model/AudioFile.h"

#include <QString>

#include <utility>
#include <vector>

/// Follows the loops of commands over many files, which run on the main thread, and may stop them between two files.
class WorkMonitor {
public:
    virtual ~WorkMonitor() = default;

    /// A loop that changes files is about to begin.
    virtual void filesWillChange() {}
    /// A loop over so many files begins. Loops are not nested.
    virtual void workBegins(qsizetype count) = 0;
    /// The next file is about to be worked on. @return false when the loop is to stop before it.
    virtual bool fileBegins(const QString& path) = 0;
    virtual void workEnds() = 0;
};

/// Lets every loop run to its end.
class UnwatchedWork : public WorkMonitor {
public:
    void workBegins(qsizetype) override {}
    bool fileBegins(const QString&) override { return true; }
    void workEnds() override {}
};

/// A loop over files that a monitor follows.
namespace WorkLoop {

inline const QString& pathOf(const QString& path)
{
    return path;
}
inline const QString& pathOf(const AudioFilePtr& record)
{
    return record->path;
}

/// Does @p work, which only reads, with each of the paths or records, one after another, until the monitor stops it.
/// @return false when it did.
template <class Files, class Work>
bool read(WorkMonitor& monitor, const Files& files, Work work)
{
    struct Span {
        WorkMonitor& monitor;
        ~Span() { monitor.workEnds(); }
    };
    monitor.workBegins(static_cast<qsizetype>(files.size()));
    const Span span{monitor};
    for (const auto& file : files) {
        if (!monitor.fileBegins(pathOf(file)))
            return false;
        work(file);
    }
    return true;
}

/// The same for work that changes the files.
template <class Files, class Work>
bool run(WorkMonitor& monitor, const Files& files, Work work)
{
    monitor.filesWillChange();
    return read(monitor, files, std::move(work));
}

} // namespace WorkLoop
