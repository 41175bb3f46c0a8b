#pragma once

#include "platform/FilePanels.h"

class UserDefaults;

/// The choice of the image format in the save panel. It is stored the moment it is made.
class SavePanelAccessoryView {
public:
    explicit SavePanelAccessoryView(UserDefaults& defaults);

    /// Offers the formats and selects the stored one.
    void viewWillAppear(SavePanel& savePanel);
    /// The user chose the format at @p index.
    void selectFormat(int index);

private:
    UserDefaults& defaults_;
};
