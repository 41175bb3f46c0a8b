#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

/// The list of recently used documents that the desktop shows.
class RecentDocuments {
public:
    virtual ~RecentDocuments() = default;
    virtual void noteNewRecentDocument(const QString& path) = 0;
};

/// The list that all desktop programs share: `recently-used.xbel` in the XDG data home (freedesktop Desktop Bookmark
/// specification). Notes are gathered and written once the event loop is idle, so that opening thousands of files
/// costs one write; only the newest of such a batch are listed. A list that can't be read is left alone.
class RecentFilesList : public QObject, public RecentDocuments {
    Q_OBJECT

public:
    static constexpr int batchLimit = 20;

    explicit RecentFilesList(QString listPath = defaultListPath());

    void noteNewRecentDocument(const QString& path) override;

    static QString defaultListPath();

private:
    void writePending();

    QString listPath_;
    QStringList pending_;
};
