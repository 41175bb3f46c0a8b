#include "library/TextFold.h"

#include <algorithm>
#include <array>

namespace {

constexpr char16_t notYetKnown = 0xffff;

struct Alphabet {
    QLocale::Language language = QLocale::AnyLanguage;
    QStringView letters;
};

/// The letters with marks that are letters of their own: those that differ at the primary level in the Unicode CLDR
/// collation of the language. Turkish and Azerbaijani tell "i" from dotless "i"; a search does not, because the capital
/// "I" of an English title could be either.
constexpr std::array alphabets{
    Alphabet{QLocale::Azerbaijani, u"çğöşü"},
    Alphabet{QLocale::Belarusian, u"ёў"},
    Alphabet{QLocale::Bosnian, u"čćđšž"},
    Alphabet{QLocale::Cebuano, u"ñ"},
    Alphabet{QLocale::Croatian, u"čćđšž"},
    Alphabet{QLocale::Czech, u"čřšž"},
    Alphabet{QLocale::Danish, u"åäæöø"},
    Alphabet{QLocale::Esperanto, u"ĉĝĥĵŝŭ"},
    Alphabet{QLocale::Estonian, u"äõöüšž"},
    Alphabet{QLocale::Faroese, u"åäæöø"},
    Alphabet{QLocale::Filipino, u"ñ"},
    Alphabet{QLocale::Finnish, u"åäæöø"},
    Alphabet{QLocale::Galician, u"ñ"},
    Alphabet{QLocale::Hungarian, u"öőüű"},
    Alphabet{QLocale::Icelandic, u"áåäæéíðóöøúý"},
    Alphabet{QLocale::Kalaallisut, u"åäæöø"},
    Alphabet{QLocale::Kazakh, u"ё"},
    Alphabet{QLocale::Kurdish, u"çéêîşû"},
    Alphabet{QLocale::Kyrgyz, u"ё"},
    Alphabet{QLocale::Latvian, u"čģķļņŗšž"},
    Alphabet{QLocale::Lithuanian, u"čšž"},
    Alphabet{QLocale::LowerSorbian, u"čćěłńŕśšźž"},
    Alphabet{QLocale::Macedonian, u"ѓќ"},
    Alphabet{QLocale::Maltese, u"ċġħż"},
    Alphabet{QLocale::NorthernSami, u"áåäæčđńöøšž"},
    Alphabet{QLocale::NorwegianBokmal, u"åäæöø"},
    Alphabet{QLocale::NorwegianNynorsk, u"åäæöø"},
    Alphabet{QLocale::Polish, u"ąćęłńóśźż"},
    Alphabet{QLocale::Romanian, u"âăîşșţț"},
    Alphabet{QLocale::Serbian, u"čćđšž"},
    Alphabet{QLocale::Slovak, u"äčôřšž"},
    Alphabet{QLocale::Slovenian, u"čćđšž"},
    Alphabet{QLocale::Spanish, u"ñ"},
    Alphabet{QLocale::Albanian, u"çë"},
    Alphabet{QLocale::Swedish, u"åäæöø"},
    Alphabet{QLocale::Turkish, u"çğöşü"},
    Alphabet{QLocale::Turkmen, u"äçňöşüýž"},
    Alphabet{QLocale::Ukrainian, u"ї"},
    Alphabet{QLocale::UpperSorbian, u"čćěłřšźž"},
    Alphabet{QLocale::Vietnamese, u"âăđêôơư"},
};

/// What Unicode does not take apart, though readers see a letter with a mark, or two letters, in it.
struct Variant {
    char16_t letter = 0;
    QStringView plain;
};

constexpr std::array variants{Variant{u'æ', u"ae"}, Variant{u'ð', u"d"},  Variant{u'ø', u"o"},
                              Variant{u'đ', u"d"},  Variant{u'ħ', u"h"},  Variant{u'ı', u"i"},
                              Variant{u'ł', u"l"},  Variant{u'œ', u"oe"}, Variant{u'ß', u"ss"}};

QString ownLetters(QLocale::Language language)
{
    const auto found = std::find_if(alphabets.begin(), alphabets.end(),
                                    [=](const Alphabet& alphabet) { return alphabet.language == language; });
    // Short i is a letter wherever Cyrillic is written.
    return QStringLiteral("й") + (found == alphabets.end() ? QString() : found->letters.toString());
}

/// The marks of Latin, Greek and Cyrillic letters, and Hebrew and Arabic vowel points.
bool isAccent(QChar character)
{
    const auto is = [c = character.unicode()](char16_t first, char16_t last) { return c >= first && c <= last; };
    return is(0x300, 0x36f) || is(0x1ab0, 0x1aff) || is(0x1dc0, 0x1dff) || is(0x20d0, 0x20ff) || is(0xfe20, 0xfe2f)
           || (character.category() == QChar::Mark_NonSpacing && (is(0x591, 0x5c7) || is(0x64b, 0x652)));
}

} // namespace

TextFold::TextFold(const QLocale& locale)
    : ownLetters_(ownLetters(locale.language())), ownMarks_(ownLetters_.normalized(QString::NormalizationForm_D)),
      single_(std::size_t{notYetKnown} + 1, notYetKnown)
{
}

QString TextFold::operator()(const QString& text) const
{
    QString result;
    appendTo(result, text);
    return result;
}

void TextFold::appendTo(QString& result, const QString& text) const
{
    const qsizetype start = result.size();
    result.resize(start + text.size());
    QChar* place = result.data() + start;
    for (const QChar character : text) {
        const char16_t single = single_[character.unicode()];
        if (single == 0 || single == notYetKnown) {
            result.truncate(start);
            appendOneByOne(result, text);
            return;
        }
        *place++ = QChar(single);
    }
}

void TextFold::appendOneByOne(QString& result, const QString& text) const
{
    const bool isParted = std::any_of(text.begin(), text.end(), [this](QChar c) { return joins(c); });
    for (const QChar character : isParted ? text.normalized(QString::NormalizationForm_C) : text) {
        const char16_t single = folded(character.unicode());
        if (single != 0)
            result += QChar(single);
        else
            result += others_.value(character.unicode());
    }
}

char16_t TextFold::folded(char16_t character) const
{
    char16_t& known = single_[character];
    if (known != notYetKnown)
        return known;
    const QString text = compute(character);
    known = text.size() == 1 && !joins(character) ? text.front().unicode() : u'\0';
    if (known == 0)
        others_.insert(character, text);
    return known;
}

bool TextFold::joins(QChar character) const
{
    const auto c = character.unicode();
    const bool isHangulPart = c >= 0x1160 && c <= 0x11ff;
    return isHangulPart
           || (character.combiningClass() != 0 && (!isAccent(character) || ownMarks_.contains(character)));
}

QString TextFold::compute(QChar character) const
{
    if (character.isSurrogate())
        return character;
    const QString parts = QString(character).normalized(QString::NormalizationForm_KD).toCaseFolded();
    QString result;
    for (const QChar letter : parts) {
        const QString composed = (result.right(1) + letter).normalized(QString::NormalizationForm_C);
        if (composed.size() == 1 && ownLetters_.contains(composed))
            result = result.chopped(std::min<qsizetype>(1, result.size())) + composed;
        else if (!isAccent(letter))
            result += plain(letter);
    }
    return result.normalized(QString::NormalizationForm_C);
}

QString TextFold::plain(QChar letter) const
{
    const auto found = std::find_if(variants.begin(), variants.end(),
                                    [=](const Variant& variant) { return variant.letter == letter; });
    return found == variants.end() || ownLetters_.contains(letter) ? QString(letter) : found->plain.toString();
}
