#include "app/PreviewController.h"

#include "library/ArrayController.h"

PreviewController::PreviewController(const ArrayController& list, PreviewPanelView& panel)
    : list_(list), panel_(panel)
{
}

void PreviewController::openQuickLook()
{
    if (numberOfPreviewItems() == 0)
        return;
    if (isShown())
        closeQuickLook();
    else
        panel_.showPreview(*list_.selectedObjects().front());
}

void PreviewController::closeQuickLook()
{
    panel_.hidePreview();
}

bool PreviewController::isShown() const
{
    return panel_.isPreviewShown();
}

int PreviewController::numberOfPreviewItems() const
{
    return list_.selection().hasSelection() ? 1 : 0;
}
