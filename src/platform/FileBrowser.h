#pragma once

#include <QString>

/// The desktop's file browser.
class FileBrowser {
public:
    virtual ~FileBrowser() = default;

    /// Opens the folder that holds the file, with the file selected. Returns at once.
    virtual void reveal(const QString& path) = 0;
};
