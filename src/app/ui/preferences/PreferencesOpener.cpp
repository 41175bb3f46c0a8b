#include "app/ui/preferences/PreferencesOpener.h"

#include "app/ui/preferences/PreferencesTabViewController.h"
#include "platform/UserDefaults.h"
#include "platform/ui/DesktopWindow.h"

PreferencesOpener::PreferencesOpener(UserDefaults& defaults, NotificationPoster& notifier, Updater& updater)
    : defaults_(defaults), notifier_(notifier), updater_(updater)
{
}

PreferencesOpener::~PreferencesOpener() = default;

void PreferencesOpener::showPreferences()
{
    if (!preferenceController_)
        preferenceController_ = std::make_unique<PreferencesTabViewController>(defaults_, notifier_, updater_);
    DesktopWindow::bringToFront(*preferenceController_);
}

void PreferencesOpener::openAbout()
{
    defaults_.setInt(DefaultsKey::selectedTabIndex, PreferencesTabViewController::aboutPane);
    defaults_.synchronize();
    showPreferences();
    preferenceController_->selectPane(PreferencesTabViewController::aboutPane);
}
