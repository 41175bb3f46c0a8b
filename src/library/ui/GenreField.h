#pragma once

#include "library/ui/TagField.h"

/// The tag field of the genre, which proposes a genre of the list while one is typed.
///
/// The rest of the proposal stands selected behind what was typed, and is written with it, unless what was typed is a
/// genre by itself. Moving the cursor or the selection takes the proposal.
class GenreField : public TagField {
    Q_OBJECT

public:
    explicit GenreField(QWidget* parent = nullptr);

    /// From now on the proposal is as good as typed.
    void takeProposal();

protected:
    QString editedText() const override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void complete(const QString& text);
    void noteText();
    void noteSelection();

    QString typed_; ///< what the user has typed last
    QString shown_; ///< the same with its completion
    /// The end of what is shown is a proposal that was not taken.
    bool isProposed_ = false;
};
