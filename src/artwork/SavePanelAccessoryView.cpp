#include "artwork/SavePanelAccessoryView.h"

#include "artwork/ImageFormats.h"
#include "platform/UserDefaults.h"

SavePanelAccessoryView::SavePanelAccessoryView(UserDefaults& defaults) : defaults_(defaults) {}

void SavePanelAccessoryView::viewWillAppear(SavePanel& savePanel)
{
    const int index = ImageFormats::storedIndex(defaults_);
    savePanel.setFormatTitles(ImageFormats::titles());
    savePanel.selectFormat(index);
    applyFormat(savePanel, index);
}

void SavePanelAccessoryView::selectFormat(SavePanel& savePanel, int index)
{
    applyFormat(savePanel, index);
    defaults_.setInt(DefaultsKey::fileTypeIndex, index);
    defaults_.synchronize();
}

void SavePanelAccessoryView::applyFormat(SavePanel& savePanel, int index)
{
    savePanel.setAllowedExtensions(ImageFormats::allowedExtensions(index));
}
