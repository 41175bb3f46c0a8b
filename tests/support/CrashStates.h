#pragma once

#include "support/Disk.h"

#include <QRandomGenerator>

#include <functional>

/// What a power cut may leave of recorded calls.
class CrashStates {
public:
    enum class Model {
        Posix,      ///< only what was synced is sure: bytes by a sync of their file, names by one of their folder
        Ext4Ordered ///< names and lengths reach the disk in order, and all of them with any sync; new bytes are there
                    ///< before what refers to them, overwritten ones come in any order
    };

    /// @param before what is surely on the disk.
    CrashStates(Disk before, QList<CallRecorder::Call> calls, quint32 seed);

    const QList<CallRecorder::Call>& calls() const { return calls_; }
    /// The calls after which a cut can leave more than after those before.
    QList<qsizetype> cuts() const;
    /// Calls @p use with what a cut after that call may leave: with all of it, or with so many at random where there is
    /// more than @p most.
    void visit(qsizetype cut, Model model, int most, const std::function<void(const Disk&)>& use) const;

private:
    using Choice = QMap<qsizetype, Portion>; ///< by call; a call that is not named is not there
    using Dimension = QList<Choice>;         ///< the least first, all of it last

    QList<Portion> portions(qsizetype index, Model model) const;
    bool isSettled(qsizetype change, qsizetype cut, Model model) const;
    QList<Dimension> dimensions(const QList<qsizetype>& pending, Model model) const;
    Disk build(qsizetype cut, const QList<qsizetype>& pending, const Choice& choice, Model model) const;

    Disk before_;
    QList<CallRecorder::Call> calls_;
    QList<qint64> lengthBefore_;                 ///< of the file that the call is about
    QList<QList<CallRecorder::FileId>> folders_; ///< whose names the call changes
    quint32 seed_;
};
