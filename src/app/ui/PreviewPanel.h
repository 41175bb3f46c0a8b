#pragma once

#include "app/PreviewController.h"
#include "platform/AudioPlayer.h"

#include <QPointer>
#include <QWidget>

#include <array>

class ElidedLabel;
class PlaybackBar;
class PreviewCover;
class QGridLayout;
class QLabel;

/// The window that previews a file: its cover, its main tags, and its sound.
///
/// Space and Escape close it; P, K and Return play and pause; Left and Right move five seconds. The other keys of
/// navigation go to the list, whose selection moves beneath while the panel keeps its file.
class PreviewPanel : public QWidget, public PreviewPanelView {
    Q_OBJECT

public:
    /// @param keyReceiver gets the keys of navigation; may be null.
    PreviewPanel(AudioPlayerFactory makePlayer, QWidget* keyReceiver, QWidget* parent = nullptr);

    void showPreview(const AudioFile& record) override;
    void hidePreview() override;
    bool isPreviewShown() const override;

signals:
    void shownChanged(bool shown);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    /// The controls leave every key that the panel knows to the panel.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    struct Detail {
        QLabel* caption;
        ElidedLabel* value;
    };

    void buildTexts(QGridLayout& texts);
    ElidedLabel* addLine(QGridLayout& texts, const char* name);
    Detail addDetail(QGridLayout& texts, const QString& caption, const char* name);
    void showTexts(const AudioFile& record);
    bool handleKey(const QKeyEvent& event);
    /// @return whether it is a key of the list.
    bool handToList(const QKeyEvent& event);

    QPointer<QWidget> keyReceiver_;
    PreviewCover* cover_ = nullptr;
    PlaybackBar* bar_ = nullptr;
    ElidedLabel* title_ = nullptr;
    ElidedLabel* artist_ = nullptr;
    ElidedLabel* album_ = nullptr;
    ElidedLabel* fileName_ = nullptr;
    std::array<Detail, 3> details_{};
};
