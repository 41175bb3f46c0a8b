#include "artwork/SavePanelAccessoryView.h"

#include "artwork/ImageFormats.h"
#include "platform/UserDefaults.h"

SavePanelAccessoryView::SavePanelAccessoryView(UserDefaults& defaults) : defaults_(defaults) {}

void SavePanelAccessoryView::viewWillAppear(SavePanel& savePanel)
{
    const QStringList& titles = ImageFormats::titles();
    QList<QStringList> extensions;
    for (int index = 0; index < titles.size(); ++index)
        extensions.append(ImageFormats::allowedExtensions(index));
    savePanel.setFormats(titles, extensions);
    savePanel.selectFormat(ImageFormats::storedIndex(defaults_));
}

void SavePanelAccessoryView::selectFormat(int index)
{
    defaults_.setInt(DefaultsKey::fileTypeIndex, index);
    defaults_.synchronize();
}
