#pragma once

#include "platform/FilePanels.h"
#include "platform/NotificationService.h"
#include "platform/Notifier.h"
#include "platform/RecentDocuments.h"

#include <QList>

struct FakeNotifier : Notifier {
    void postNotification(const QString& title, const QString& body) override
    {
        posted.append(title + QStringLiteral(": ") + body);
    }
    QStringList posted;
};

struct FakeNotificationService : NotificationService {
    void deliver(const Notice& notice, std::function<void()> failed) override
    {
        notices.append(notice);
        if (refuses)
            failed();
    }
    void requestAuthorization(std::function<void(bool granted)> answered) override { answered(granted); }
    QList<Notice> notices;
    bool refuses = false;
    bool granted = true;
};

struct FakeRecentDocuments : RecentDocuments {
    void noteNewRecentDocument(const QString& path) override { paths.append(path); }
    QStringList paths;
};

/// The user who always chooses the same.
struct FakeFilePanels : FilePanels {
    void chooseAudioFiles(const QString&, Chosen chosen) override { chosen(files); }
    void chooseAudioFolder(const QString&, Chosen chosen) override { chosen(folders); }
    QStringList files;
    QStringList folders;
};
