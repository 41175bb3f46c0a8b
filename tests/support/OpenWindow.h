#pragma once

#include "app/ui/MainWindow.h"
#include "support/OpenLibrary.h"

/// The main window with copies of test data open.
struct OpenWindow : OpenLibrary {
    using OpenLibrary::OpenLibrary;
    MainWindow window{controller, list, drops, art, artworkDrops, recent, defaults};
};
