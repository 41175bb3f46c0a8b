#pragma once

#include "support/CrashStates.h"

#include <QHash>
#include <QString>

/// Looks at files again after a power cut, as a user's next start of the program does.
class AfterCrash {
public:
    /// What became of a disk.
    struct Outcome {
        QByteArray contents; ///< a hash of what is in the file; null when it is gone
        QString trouble;     ///< besides what is in the file; empty when there is none
        bool isChanged = false;
    };
    struct Recovery {
        Disk before; ///< as it was found
        QList<CallRecorder::Call> calls;
    };

    /// @param root of the disks that are to come. @param song the path of the file below it.
    /// @param second another name of it; none when empty.
    AfterCrash(QByteArray root, QByteArray song, QByteArray second);

    /// @param torn contents of the file that no record in force would leave alone.
    const Outcome& lookAt(const Disk& disk, const QByteArray& torn);
    /// What is done when a disk is looked at.
    Recovery recovery(const Disk& disk) const;
    qsizetype looked() const { return outcomes_.size(); }

    static QByteArray hash(const QByteArray& contents);

private:
    CallRecorder::Recording recover() const;
    QString troubleOn(const Disk& disk, const QByteArray& torn);
    bool hasTemporary() const;
    bool removesTemporaries() const;

    QByteArray root_;
    QByteArray song_;
    QByteArray second_;
    QHash<QByteArray, Outcome> outcomes_;
    QHash<QByteArray, QString> troubles_;
};
