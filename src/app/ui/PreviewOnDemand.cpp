#include "app/ui/PreviewOnDemand.h"

#include "app/ui/PreviewPanel.h"

PreviewOnDemand::PreviewOnDemand(AudioPlayerFactory makePlayer, QWidget& keyReceiver, QWidget& window)
    : makePlayer_(std::move(makePlayer)), keyReceiver_(keyReceiver), window_(window)
{
}

void PreviewOnDemand::showPreview(const AudioFile& record)
{
    if (!panel_) {
        panel_ = new PreviewPanel(makePlayer_, &keyReceiver_, &window_);
        connect(panel_, &PreviewPanel::shownChanged, this, &PreviewOnDemand::shownChanged);
    }
    panel_->showPreview(record);
}

void PreviewOnDemand::hidePreview()
{
    if (panel_)
        panel_->hidePreview();
}

bool PreviewOnDemand::isPreviewShown() const
{
    return panel_ && panel_->isPreviewShown();
}
