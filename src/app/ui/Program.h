#pragma once

#include "app/AppDelegate.h"
#include "app/FailureLog.h"
#include "app/LongWork.h"
#include "app/NotificationPoster.h"
#include "app/PreviewController.h"
#include "app/StartRecovery.h"
#include "app/Updater.h"
#include "app/ViewController.h"
#include "app/ui/Appearance.h"
#include "app/ui/MainWindow.h"
#include "app/ui/PreviewOnDemand.h"
#include "app/ui/ProgramStyle.h"
#include "app/ui/preferences/PreferencesOpener.h"
#include "artwork/ArtworkCommands.h"
#include "artwork/ArtworkDrops.h"
#include "artwork/ShownArt.h"
#include "library/ArrayController.h"
#include "library/BatchCommands.h"
#include "library/FieldEditor.h"
#include "library/FileLoader.h"
#include "library/ListDrops.h"
#include "library/TagWriter.h"
#include "naming/FileRenamer.h"
#include "platform/DBusColourScheme.h"
#include "platform/DBusFileBrowser.h"
#include "platform/DBusNotificationService.h"
#include "platform/DropFolder.h"
#include "platform/FeedFetcherOnDemand.h"
#include "platform/RecentDocuments.h"
#include "platform/TerminationSignals.h"
#include "platform/UserDefaults.h"
#include "platform/ui/FileDialogs.h"
#include "sandbox/BookmarksManager.h"
#include "sandbox/OpenPanelManager.h"
#include "sandbox/PermissionManager.h"

/// Everything one running program is made of, in the order of construction.
struct Program {
    ProgramStyle& style = ProgramStyle::install();
    UserDefaults defaults;
    DBusNotificationService notificationService;
    FailureLog failures;
    StartRecovery recovery{failures};
    NotificationPoster notifier{defaults, notificationService};
    RecentFilesList recentDocuments;
    FileDialogs panels;
    DBusFileBrowser fileBrowser;
    DropFolder dropFolder;
    LongWork work;
    ArrayController list;
    FileLoader loader{list, notifier, recentDocuments, work};
    TagWriter writer{notifier};
    FieldEditor editor{list, writer, work};
    BatchCommands batch{list, writer, notifier, work};
    ListDrops drops{list, loader, dropFolder, notifier};
    ShownArt art;
    ArtworkCommands artwork{list, art, notifier, panels, fileBrowser, defaults, work};
    ArtworkDrops artworkDrops{list, artwork, art, dropFolder, notifier, defaults};
    BookmarksManager bookmarks{defaults};
    OpenPanelManager openPanel{panels};
    PermissionManager permissions{openPanel, bookmarks};
    FileRenamer renamer{list, permissions, notifier, work};
    ViewController controller{list, loader, editor, batch, artwork, art, renamer, panels};
    MainWindow window{controller, list, drops, art, artworkDrops, recentDocuments, defaults};
    PreviewOnDemand previewPanel{AudioPlayerPlugin::makePlayer, window.table(), window};
    PreviewController preview{list, previewPanel};
    FeedFetcherOnDemand feedFetcher;
    Updater updater{defaults, feedFetcher};
    PreferencesOpener preferences{defaults, notifier, updater};
    AppDelegate delegate{controller, notifier, defaults};
    TerminationSignals terminationSignals;
    Appearance appearance;
    DBusColourScheme colourScheme;
};
