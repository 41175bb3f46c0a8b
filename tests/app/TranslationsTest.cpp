#include "app/Translations.h"
#include "app/ui/StatusLine.h"
#include "fakes/Windows.h"
#include "support/Rows.h"

#include <QLabel>
#include <QMenuBar>
#include <QProcess>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QToolButton>
#include <QTranslator>

namespace {

/// The messages of a catalogue as they are written there, each behind the name of its context.
QStringList messages(const QString& folder, const QString& language)
{
    static const QRegularExpression part(u"<name>(.*?)</name>|<message.*?</message>"_qs,
                                         QRegularExpression::DotMatchesEverythingOption);
    QString text = QString::fromUtf8(ScratchFolder::contents(folder + u"/sonvika_%1.ts"_qs.arg(language)));
    // Written the one way or the other.
    text.replace(u"&apos;"_qs, u"'"_qs).replace(u"&quot;"_qs, u"\""_qs);
    QStringList found;
    QString context;
    for (auto match = part.globalMatch(text); match.hasNext();) {
        const auto each = match.next();
        if (each.hasCaptured(1))
            context = each.captured(1);
        else
            found.append(context + each.captured());
    }
    found.sort();
    return found;
}

/// The texts of a message between tags of a name.
QStringList elements(const QString& message, const QString& tag)
{
    const QRegularExpression element(u"<%1[^>]*>([^<]*)</%1>"_qs.arg(tag));
    QStringList texts;
    for (auto match = element.globalMatch(message); match.hasNext();)
        texts.append(match.next().captured(1));
    return texts;
}

/// What a translation must have as often as its source, in any order; both as XML.
QStringList fixedParts(const QString& text)
{
    static const QRegularExpression parts(u"%L?n|%[1-9@]|&amp;[a-z]+;|&lt;.*?&gt;|\n|&amp;(?=\\w)"_qs);
    QStringList found;
    for (auto match = parts.globalMatch(text); match.hasNext();)
        found.append(match.next().captured());
    found.sort();
    return found;
}

const QString catalogues = QStringLiteral(SOURCE_DIR "/translations");
const QStringList languages{u"de"_qs, u"en"_qs, u"fr"_qs};

/// A language in which every text is half as long again.
struct LongTexts : QTranslator {
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        const QString text = QString::fromUtf8(source);
        // Numbers and the texts of Qt's own parts stay.
        if (text == u"0" || QByteArrayView(context).startsWith("Q"))
            return {};
        return text + QString(std::max<qsizetype>(2, text.size() / 2), u'~');
    }
};

/// The keys that are given twice among the texts.
QStringList ambiguous(const QStringList& texts)
{
    QMap<QString, QString> byKey;
    QStringList twice;
    for (const auto& text : texts) {
        const QString key = QKeySequence::mnemonic(text).toString();
        if (!key.isEmpty() && byKey.contains(key))
            twice.append(byKey[key] + u" = "_qs + text);
        byKey[key] = text;
    }
    return twice;
}

QStringList textsOf(const QList<QAction*>& actions)
{
    QStringList texts;
    for (const auto* action : actions)
        texts.append(action->text());
    return texts;
}

/// The texts that have less room in a window than they need, and the keys that are given twice.
QStringList faultsOfTexts(const QWidget& window)
{
    QStringList faults;
    QStringList withKeys;
    for (const auto* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible())
            continue;
        const auto* label = qobject_cast<const QLabel*>(widget);
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        const auto* tool = qobject_cast<const QToolButton*>(widget);
        const bool isPicture = tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly && !tool->icon().isNull();
        const QString text = label ? label->text() : button ? button->text() : QString();
        const bool wraps = label && label->wordWrap();
        const int needed = wraps ? widget->heightForWidth(widget->width()) : widget->sizeHint().width();
        if (!text.isEmpty() && !isPicture && (wraps ? widget->height() : widget->width()) < needed)
            faults.append(u"cut: "_qs + text);
        if (button || (label && label->buddy()))
            withKeys.append(text);
        if (const auto* bar = qobject_cast<const QMenuBar*>(widget))
            withKeys += textsOf(bar->actions());
    }
    return faults + ambiguous(withKeys);
}

} // namespace

class TranslationsTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup()
    {
        for (auto* translator : qApp->findChildren<QTranslator*>())
            delete translator;
    }

    void nothingIsMissingOrLeftOver()
    {
        const ScratchFolder folder;
        for (const auto& language : languages) {
            const QString name = u"/sonvika_%1.ts"_qs.arg(language);
            QVERIFY(QFile::copy(catalogues + name, folder.path(name.mid(1))));
        }
        QProcess update;
        update.start(QStringLiteral(CMAKE_PROGRAM),
                     {QStringLiteral("-DLUPDATE=" LUPDATE_PROGRAM), u"-DTO="_qs + folder.path(u"."_qs), u"-P"_qs,
                      QStringLiteral(SOURCE_DIR "/scripts/update-translations.cmake")});
        QVERIFY(update.waitForFinished() && update.exitCode() == 0);
        for (const auto& language : languages) {
            const QStringList committed = messages(catalogues, language);
            QVERIFY(!committed.isEmpty());
            QCOMPARE(committed.filter(u"<translation type="_qs), QStringList());
            QCOMPARE(messages(folder.path(u"."_qs), language).join(u'\n'), committed.join(u'\n'));
        }
    }

    void translationsKeepTheFixedParts()
    {
        QStringList wrong;
        for (const auto& language : languages) {
            for (const auto& message : messages(catalogues, language)) {
                const QString source = elements(message, u"source"_qs).value(0);
                const bool counts = message.contains(u"numerusform");
                for (const auto& text : elements(message, counts ? u"numerusform"_qs : u"translation"_qs)) {
                    if (text.isEmpty() || fixedParts(text) != fixedParts(source))
                        wrong.append(language + u": "_qs + source + u" -> "_qs + text);
                }
            }
        }
        QCOMPARE(wrong, QStringList());
    }

    // the user's language | what is told of 0, 1, 2 and 1234 files
    void speaksTheLanguageOfTheUser_data()
    {
        addRows({"de_DE | 0 Dateien, 1 Datei, 2 Dateien, 1.234 Dateien", "fr_FR | 0 fichier, 1 fichier, 2 fichiers",
                 "en_US | 0 files, 1 file, 2 files, 1,234 files", "C | 0 files, 1 file, 2 files",
                 "sv_SE | 0 files, 1 file, 2 files"});
    }
    void speaksTheLanguageOfTheUser()
    {
        const auto [name, counts] = row<2>();
        const QLocale user(name);
        QLocale::setDefault(user);
        Translations::install(user);
        QStringList told;
        for (const int count : {0, 1, 2, 1234})
            told.append(StatusLine::tr("%Ln files", nullptr, count));
        QLocale::setDefault(QLocale::c());
        const auto expected = counts.split(u", "_qs);
        QCOMPARE(told.first(expected.size()), expected);
    }

    void windowsShowWholeTextsAndUniqueMnemonics_data()
    {
        Windows::addRows({u" | long"_qs, u" | de"_qs, u" | en"_qs, u" | fr"_qs});
    }
    void windowsShowWholeTextsAndUniqueMnemonics()
    {
        const auto [name, language] = row<2>();
        LongTexts longTexts;
        if (language == u"long")
            QVERIFY(QCoreApplication::installTranslator(&longTexts));
        else
            Translations::install(QLocale(language));
        Windows windows;
        auto& window = windows.open(name);
        QStringList faults = faultsOfTexts(window);
        for (const auto* menu : window.findChildren<QMenu*>())
            faults += ambiguous(textsOf(menu->actions()));
        QCOMPARE(faults.join(u'\n'), QString());
        const auto* preferences = qobject_cast<PreferencesTabViewController*>(&window);
        if (preferences && language != u"long")
            QCOMPARE(preferences->width(), qRound(preferences->prefWidth()));
        const auto* credits = window.findChild<QTextBrowser*>();
        if (credits && credits->isVisible() && language != u"long")
            QVERIFY(credits->document()->size().height() <= credits->viewport()->height());
    }

    void theseChecksCanFail()
    {
        QCOMPARE(fixedParts(u"&amp;A %1 %Ln&amp;nbsp;&lt;b&gt;\n&amp; B"_qs).size(), 6);
        QCOMPARE(ambiguous({u"&One"_qs, u"Tw&o"_qs, u"T&hree"_qs}), QStringList{u"&One = Tw&o"_qs});
        QWidget box;
        QLabel narrow(u"A text"_qs, &box);
        narrow.resize(5, narrow.sizeHint().height());
        box.show();
        QCOMPARE(faultsOfTexts(box), QStringList{u"cut: A text"_qs});
    }
};

QTEST_MAIN(TranslationsTest)
#include "TranslationsTest.moc"
