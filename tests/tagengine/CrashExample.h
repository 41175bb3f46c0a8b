#pragma once

#include "tagengine/AfterCrash.h"
#include "tagengine/WritingOperations.h"

#include <map>
#include <optional>
#include <set>

/// How much of all that may be left is tried.
struct CrashScope {
    int statesPerCut;         ///< for each model
    int recoveriesOutOf;      ///< one of so many recoveries is cut itself,
    int statesPerRecoveryCut; ///< for each model
};

/// What was tried and found wrong.
struct CrashTally {
    struct Count {
        qsizetype tried = 0;
        qsizetype bad = 0;
    };
    struct Trouble {
        qsizetype count = 0;
        QString where; ///< for the first time
    };
    std::map<CrashStates::Model, Count> states;
    QMap<QString, Trouble> wrong;

    void add(const QString& trouble, const QString& where);
    void operator+=(const CrashTally& other);
    QString counts() const;
    QString report() const;
};

/// A file in a folder of its own, operations on it, the calls that they made, and what comes of cuts after these.
class CrashExample {
public:
    /// @param fixture as WritingOperations::prepare takes it. @param placement "plain", "linked" or "closed folder".
    /// @param stage "first" when nothing was ever saved by this user, "later" when another process has saved, "again"
    /// when this process has saved the same file, "crashed" when it brings the file back first.
    CrashExample(const QString& fixture, const QString& placement, const QString& stage,
                 const WritingOperations::NamedOperation& operation, const CrashScope& scope);

    const QString& name() const { return name_; }
    /// The places of the syncs, by the number of the call.
    QMap<qsizetype, QString> syncs() const;
    /// The places that recoveries sync, as far as they were seen.
    const std::set<QString>& placesSyncedByRecovery() const { return recoverySyncs_; }
    /// How many disks were looked at again.
    qsizetype looked() const { return after_->looked(); }

    /// Tries all cuts of the operations without some of their calls, and of recoveries without the syncs of one place.
    CrashTally tryCuts(const std::function<bool(qsizetype)>& isLeftOut = {},
                       const QString& syncLeftOutOfRecovery = {});

private:
    using Model = CrashStates::Model;
    struct Demand {
        QList<QByteArray> contents; ///< a hash of any of them
        QByteArray key;
    };

    void interrupt(const WritingOperations::Operation& operation);
    void run(const QList<WritingOperations::Operation>& steps, const QByteArray& closedFolder);
    Demand demandAt(const QList<CallRecorder::Call>& calls, qsizetype cut) const;
    QByteArray torn() const;
    void judge(const Disk& disk, const Demand& demand, Model model, const std::function<QString()>& cut,
               CrashTally& tally);
    void tryRecovery(const Disk& disk, const Demand& demand, CrashTally& tally);

    QString name_;
    CrashScope scope_;
    ScratchFolder scratch_;
    QByteArray root_ = QFile::encodeName(QDir(scratch_.path(QStringLiteral("disk"))).absolutePath());
    QByteArray album_ = root_ + "/album";
    QByteArray song_;
    QByteArray second_; ///< another name of it, if it has one
    Disk before_;
    QList<CallRecorder::Call> calls_;
    QList<QByteArray> contents_; ///< before, and after each operation
    QList<QByteArray> hashes_;   ///< of these
    QString trouble_;            ///< without any crash
    std::optional<AfterCrash> after_;
    QString syncLeftOutOfRecovery_;
    std::set<std::pair<Model, QByteArray>> judged_; ///< by disk and demand
    std::set<QByteArray> recoveries_;               ///< that change something, alike
    QRandomGenerator random_;
    std::set<QString> recoverySyncs_;
};
