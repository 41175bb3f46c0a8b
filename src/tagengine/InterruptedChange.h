#pragma once

#include <QList>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

/// A change of a file that did not come to its end and can't be taken back, because the file is not, or not provably,
/// what the change left. What is known of it is kept until somebody decides.
struct InterruptedChange {
    enum class Reason {
        Missing,     ///< nothing is there now
        OtherVolume, ///< another file system is there now
        Different,   ///< something else has changed the file since, or it is another file
        Unreadable,  ///< the file, or what is known of the change, can't be read
        InUse        ///< another program has locked the file
    };
    QString id;   ///< tells it from the others; stays the same until it is forgotten
    QString path; ///< of the file
    Reason reason = Reason::Different;

    /// In the user's language, a sentence without a full stop.
    QString reasonText() const;
};

/// The changes that did not come to their end, and the two ways out of those that can't be taken back.
namespace InterruptedChanges {

/// Takes back what can be taken back; see TaglibWrapper::recoverInterruptedChanges.
/// @return what is left, each with why.
QList<InterruptedChange> recover();

/// Tries once more to take back what can be taken back, as a disk may have come back since: to be asked before a way out
/// is taken. @return whether that change is left still; false too when it was forgotten meanwhile.
bool isLeft(const QString& id);

/// Writes the file as it was before the change, as far as is known, to a new file in the same folder.
/// @return the new file's path, and the change is forgotten; none when it could not be written, and
/// TaglibWrapper::failureReason says why.
std::optional<QString> restoreCopy(const QString& id);

/// Forgets a change and leaves its file as it is. @return false when it could not be.
bool forget(const QString& id);

/// recover() on a thread of its own, as a file may lie on a disk that does not answer. Does nothing, and is done at once,
/// when there is no such change, or no thread. The end of the program does not wait for it.
class Search {
public:
    /// @param whenDone is called on that thread, if there is one, when the search has come to its end, and never after
    /// this object is gone. It must neither wait nor use this object.
    explicit Search(std::function<void()> whenDone = {});
    ~Search();

    /// Waits until it has come to its end.
    /// @return what is left, once; none when it has not come to its end by then, and when it was given already.
    std::optional<QList<InterruptedChange>> wait(std::chrono::milliseconds patience);
    Q_DISABLE_COPY_MOVE(Search)

private:
    bool begin();

    struct Shared;
    std::shared_ptr<Shared> shared_;
};

} // namespace InterruptedChanges
