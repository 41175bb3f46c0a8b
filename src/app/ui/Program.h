#pragma once

#include "app/NotificationPoster.h"
#include "app/ViewController.h"
#include "app/ui/Appearance.h"
#include "app/ui/MainWindow.h"
#include "app/ui/ProgramStyle.h"
#include "library/ArrayController.h"
#include "library/FieldEditor.h"
#include "library/FileLoader.h"
#include "library/ListDrops.h"
#include "library/TagWriter.h"
#include "platform/DBusColourScheme.h"
#include "platform/DBusNotificationService.h"
#include "platform/RecentDocuments.h"
#include "platform/UserDefaults.h"
#include "platform/ui/FileDialogs.h"

/// Everything one running program is made of, in the order of construction.
struct Program {
    ProgramStyle& style = ProgramStyle::install();
    UserDefaults defaults;
    DBusNotificationService notificationService;
    NotificationPoster notifier{defaults, notificationService};
    RecentFilesList recentDocuments;
    FileDialogs panels;
    ArrayController list;
    FileLoader loader{list, notifier, recentDocuments};
    TagWriter writer{notifier};
    FieldEditor editor{list, writer};
    ListDrops drops{list, loader};
    ViewController controller{list, loader, editor, panels};
    MainWindow window{controller, list, drops, defaults};
    Appearance appearance;
    DBusColourScheme colourScheme;
};
