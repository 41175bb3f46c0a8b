#pragma once

#include "app/PreviewController.h"
#include "platform/AudioPlayer.h"

class PreviewPanel;
class QWidget;

/// The preview panel, made when it is first shown: most runs of the program never need it.
class PreviewOnDemand : public QObject, public PreviewPanelView {
    Q_OBJECT

public:
    /// @param keyReceiver as for PreviewPanel. @param window the panel's parent, which owns it.
    PreviewOnDemand(AudioPlayerFactory makePlayer, QWidget& keyReceiver, QWidget& window);

    void showPreview(const AudioFile& record) override;
    void hidePreview() override;
    bool isPreviewShown() const override;

signals:
    void shownChanged(bool shown);

private:
    AudioPlayerFactory makePlayer_;
    QWidget& keyReceiver_;
    QWidget& window_;
    PreviewPanel* panel_ = nullptr;
};
