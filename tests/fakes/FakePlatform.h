#pragma once

#include "platform/FileBrowser.h"
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
    void noteFailure(const Failure& failure) override { noted.append(failure); }
    QStringList posted;
    QList<Failure> noted;
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
    QStringList recentDocuments() const override { return paths; }
    QStringList paths;
};

/// The user who always chooses the same.
struct FakeFilePanels : FilePanels {
    void chooseAudioFiles(const QString&, Chosen chosen) override { chosen(files); }
    void chooseAudioFolder(const QString&, Chosen chosen) override { chosen(folders); }
    void chooseImageFiles(const ImagePanelRequest& request) override
    {
        if (meanwhile)
            meanwhile();
        request.chosen(files);
    }
    void chooseSavePath(const SavePanelRequest& request) override { save(request); }
    AccessPanelAnswer runAccessPanel(const AccessPanelRequest& request) override
    {
        accessRequests.append(request.directory);
        return access;
    }
    QStringList files;
    QStringList folders;
    AccessPanelAnswer access;
    QStringList accessRequests;
    std::function<void(const SavePanelRequest& request)> save;
    /// What happens while the panel is open.
    std::function<void()> meanwhile;
};

struct FakeFileBrowser : FileBrowser {
    void reveal(const QString& path) override { revealed.append(path); }
    QStringList revealed;
};
