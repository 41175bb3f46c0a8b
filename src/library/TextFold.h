#pragma once

#include <QHash>
#include <QLocale>
#include <QString>

#include <vector>

/// Makes texts the same that a search takes for the same: it drops case, width and accents, so that "o" finds "Ö", but
/// leaves the letters that the alphabet of a language counts as letters of their own. A text and its beginning fold to a
/// text and its beginning, as long as the beginning does not part a letter from an accent that follows it.
class TextFold {
public:
    explicit TextFold(const QLocale& locale);

    QString operator()(const QString& text) const;
    void appendTo(QString& result, const QString& text) const;

private:
    QString compute(QChar character) const;
    QString plain(QChar letter) const;
    /// Whether the character may be part of the letter that stands before it.
    bool joins(QChar character) const;
    /// @return 0 for what joins, or folds to no or several characters, which `others_` holds.
    char16_t folded(char16_t character) const;
    void appendOneByOne(QString& result, const QString& text) const;

    QString ownLetters_;
    /// Their plain letters and their marks.
    QString ownMarks_;
    // Filled as characters turn up.
    mutable std::vector<char16_t> single_;
    mutable QHash<char16_t, QString> others_;
};
