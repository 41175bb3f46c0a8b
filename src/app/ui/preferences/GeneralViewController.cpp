#include "app/ui/preferences/GeneralViewController.h"

#include "app/NotificationPoster.h"
#include "app/ui/preferences/PaneForm.h"
#include "artwork/ImageFormats.h"
#include "platform/UserDefaults.h"

#include <QCheckBox>
#include <QComboBox>
#include <QShowEvent>

GeneralViewController::GeneralViewController(UserDefaults& defaults, NotificationPoster& notifier, QWidget* parent)
    : QWidget(parent), defaults_(defaults), notifier_(notifier),
      notificationsButton_(new QCheckBox(tr("Show &notifications"))), popupButton_(new QComboBox)
{
    setWindowTitle(tr("General"));
    notificationsButton_->setObjectName(QStringLiteral("notificationsButton"));
    popupButton_->setObjectName(QStringLiteral("popupButton"));
    popupButton_->setAccessibleName(tr("Format of saved album art"));

    PaneForm form(*this);
    form.addRow(tr("Failures:"), notificationsButton_);
    form.addNote(tr("When a file can't be read, changed or renamed."));
    form.addRow(tr("Save album art &as:"), popupButton_);
    form.addNote(tr("Also used for album art dragged to other programs."));

    connect(notificationsButton_, &QAbstractButton::clicked, this, &GeneralViewController::toggleNotifictionsState);
    connect(popupButton_, &QComboBox::activated, this, &GeneralViewController::selectFormat);
    updateButtons();
}

void GeneralViewController::updateButtons()
{
    notificationsButton_->setChecked(defaults_.boolForKey(DefaultsKey::showNotifications));
    popupButton_->clear();
    popupButton_->addItems(ImageFormats::titles());
    popupButton_->setCurrentIndex(ImageFormats::storedIndex(defaults_));
}

void GeneralViewController::selectFormat()
{
    defaults_.setInt(DefaultsKey::fileTypeIndex, popupButton_->currentIndex());
    defaults_.synchronize();
}

void GeneralViewController::toggleNotifictionsState()
{
    defaults_.setBool(DefaultsKey::showNotifications, !defaults_.boolForKey(DefaultsKey::showNotifications));
    defaults_.synchronize();
    const bool on = defaults_.boolForKey(DefaultsKey::showNotifications);
    // Differs from what the click made of the box when an earlier click was refused.
    notificationsButton_->setChecked(on);
    if (on)
        notifier_.requestAuthorization();
}

void GeneralViewController::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        updateButtons();
}
