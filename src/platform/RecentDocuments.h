#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

/// The list of recently used documents that the desktop shows.
class RecentDocuments {
public:
    virtual ~RecentDocuments() = default;
    virtual void noteNewRecentDocument(const QString& path) = 0;
    /// The files that this program noted and that are still there, the last one first.
    virtual QStringList recentDocuments() const = 0;
};

/// The list that all desktop programs share: `recently-used.xbel` in the XDG data home (freedesktop Desktop Bookmark
/// specification). Notes are gathered and written once the event loop is idle, so that opening thousands of files
/// costs one write; only the newest of such a batch are listed. A list that can't be read is left alone.
class RecentFilesList : public QObject, public RecentDocuments {
    Q_OBJECT

public:
    static constexpr int batchLimit = 20;
    /// How many recentDocuments gives at most.
    static constexpr int listedLimit = 10;

    explicit RecentFilesList(QString listPath = defaultListPath());

    void noteNewRecentDocument(const QString& path) override;
    QStringList recentDocuments() const override;

    static QString defaultListPath();

private:
    void writePending();

    QString listPath_;
    QStringList pending_;
};
