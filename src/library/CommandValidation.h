#pragma once

#include <QString>

/// Which commands apply, told by their tags: one function of what is selected, shown and open.
namespace CommandValidation {

enum Tag {
    Untagged = 0,
    Remove = 1,
    SaveImage = 2,
    UpdateImage = 3,
    DeleteImage = 4,
    EditTags = 5,
    Anytime = 6,
    QuickLook = 7,
    Rename = 8,
    Reveal = 9,
    Strip = 10
};

struct State {
    bool anySelected = false;
    /// The art well shows an image, which can be saved.
    bool artShown = false;
    /// The files have art in common, whether or not it can be shown.
    bool artThere = false;
    bool previewShown = false;
};

/// Whether the command may be used now.
bool validateMenuItem(int tag, const State& state);

/// The command's title in the user's language where it follows the state; a null text for the others.
QString title(int tag, const State& state);

} // namespace CommandValidation
