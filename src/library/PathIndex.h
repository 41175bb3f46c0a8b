#pragma once

#include <QByteArray>
#include <QString>

#include <map>

/// Answers whether some path of a set contains a given path as a substring, without looking at every path.
///
/// The paths asked for end in the extension of an audio file, so an occurrence ends where such an extension ends.
/// Every stored path, and every beginning of it that ends so, is kept reversed in a sorted map; a path occurs in the
/// set when its own reverse begins one of the entries. Any other text is searched for in every entry.
class PathIndex {
public:
    void insert(const QString& path);
    void remove(const QString& path);
    /// Case-sensitive containment, not equality.
    bool anyContains(const QString& path) const;

private:
    std::map<QByteArray, int> entries_;
};
