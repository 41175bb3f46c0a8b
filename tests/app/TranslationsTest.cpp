#include "app/Translations.h"
#include "app/NotificationPoster.h"
#include "app/Updater.h"
#include "app/ui/MainWindow.h"
#include "app/ui/preferences/PreferencesTabViewController.h"
#include "fakes/FakeFeedFetcher.h"
#include "fakes/Library.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QMenuBar>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <QTextBrowser>
#include <QTranslator>
#include <QXmlStreamReader>

#include <map>

namespace {

struct Message {
    QString state;
    QString source;
    QStringList translations;
};

using Messages = std::map<QString, Message>;

Message readMessage(QXmlStreamReader& xml, QString& key)
{
    Message message;
    key += u'|' + xml.attributes().value(u"numerus"_qs).toString();
    while (xml.readNextStartElement()) {
        const auto name = xml.name().toString();
        if (name == u"translation")
            message.state = xml.attributes().value(u"type"_qs).toString();
        const QString text = xml.readElementText(QXmlStreamReader::IncludeChildElements);
        if (name == u"source")
            message.source = text;
        if (name == u"source" || name == u"comment")
            key += u'|' + text;
        if (name == u"translation")
            message.translations = text.trimmed().split(QRegularExpression(u"\n\\s*"_qs));
    }
    return message;
}

/// By context, source and comment.
Messages readMessages(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s can't be read", qPrintable(path));
    QXmlStreamReader xml(&file);
    Messages messages;
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"name")
            context = xml.readElementText();
        if (xml.name() != u"message")
            continue;
        QString key = context;
        const Message message = readMessage(xml, key);
        messages[key] = message;
    }
    return messages;
}

/// What a translation must have as often as its source, in any order.
QStringList fixedParts(QString text)
{
    static const QRegularExpression parts(u"%L?n|%[1-9@]|&[a-z]+;|<[^>]*>|\n|&(?=\\w)"_qs);
    QStringList found;
    for (auto match = parts.globalMatch(text); match.hasNext();)
        found.append(match.next().captured());
    found.sort();
    return found;
}

QStringList languages()
{
    return {u"de"_qs, u"en"_qs, u"fr"_qs};
}

QString committed(const QString& language)
{
    return QStringLiteral(SOURCE_DIR "/translations/sonvika_%1.ts").arg(language);
}

/// The windows of the program, with a file selected.
struct Windows {
    ScratchFolder folder;
    Library library;
    FakeNotificationService service;
    NotificationPoster poster{library.defaults, service};
    FakeFeedFetcher fetcher;
    Updater updater{library.defaults, fetcher, QUrl()};
    MainWindow main{library.controller,   library.list,   library.drops,   library.art,
                    library.artworkDrops, library.recent, library.defaults};
    PreferencesTabViewController preferences{library.defaults, poster, updater};

    Windows()
    {
        main.show();
        if (!library.loader.openPath(folder.copy(u"v24.mp3"_qs)))
            qFatal("The file was not opened");
        library.controller.selectAll();
        library.controller.showFormatWindow();
        preferences.show();
    }
};

/// The keys that are given twice among the texts.
QStringList ambiguous(const QStringList& texts)
{
    QMap<QString, QStringList> byKey;
    for (const auto& text : texts) {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (!key.isEmpty())
            byKey[key.toString()].append(text);
    }
    QStringList twice;
    for (const auto& same : byKey) {
        if (same.size() > 1)
            twice.append(same.join(u" = "_qs));
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

/// The texts with mnemonics that are visible in a window, its menu bar among them, but not in its dialogs.
QStringList textsOf(const QWidget& window)
{
    QStringList texts;
    for (const auto* widget : window.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        if (widget->window() != &window || !widget->isVisible())
            continue;
        if (label && label->buddy())
            texts.append(label->text());
        else if (button)
            texts.append(button->text());
        else if (const auto* bar = qobject_cast<const QMenuBar*>(widget))
            texts += textsOf(bar->actions());
    }
    return texts;
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
        for (const auto& language : languages())
            QVERIFY(QFile::copy(committed(language), folder.path(QFileInfo(committed(language)).fileName())));
        QProcess update;
        update.start(QStringLiteral(CMAKE_PROGRAM),
                     {QStringLiteral("-DLUPDATE=" LUPDATE_PROGRAM), u"-DTO="_qs + folder.path(u"."_qs), u"-P"_qs,
                      QStringLiteral(SOURCE_DIR "/scripts/update-translations.cmake")});
        QVERIFY(update.waitForFinished() && update.exitCode() == 0);
        for (const auto& language : languages()) {
            const auto before = readMessages(committed(language));
            const auto after = readMessages(folder.path(QFileInfo(committed(language)).fileName()));
            QVERIFY(!after.empty());
            QStringList wrong;
            for (const auto& [key, message] : before)
                wrong += after.contains(key) && message.state.isEmpty() ? QStringList() : QStringList(key);
            for (const auto& [key, message] : after)
                wrong += before.contains(key) ? QStringList() : QStringList(key);
            QCOMPARE(wrong, QStringList());
        }
    }

    void translationsKeepTheFixedParts()
    {
        QCOMPARE(fixedParts(u"&A %1 %Ln&nbsp;<b>\n& B"_qs).size(), 6);
        QStringList wrong;
        for (const auto& language : languages()) {
            for (const auto& [key, message] : readMessages(committed(language))) {
                for (const auto& text : message.translations) {
                    if (text.isEmpty() || fixedParts(text) != fixedParts(message.source))
                        wrong.append(language + u": "_qs + key + u" -> "_qs + text);
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
            told.append(MainWindow::tr("%Ln files", nullptr, count));
        QLocale::setDefault(QLocale::c());
        const auto expected = counts.split(u", "_qs);
        QCOMPARE(told.first(expected.size()), expected);
    }

    void mnemonicsAreUnique_data() { addRows({"de", "en", "fr"}); }
    void mnemonicsAreUnique()
    {
        const auto [language] = row<1>();
        Translations::install(QLocale(language));
        QCOMPARE(ambiguous({u"&One"_qs, u"Tw&o"_qs, u"T&hree"_qs}), QStringList{u"&One = Tw&o"_qs});
        Windows windows;
        QStringList found;
        for (const auto* menu : windows.main.findChildren<QMenu*>())
            found += ambiguous(textsOf(menu->actions()));
        for (const auto* window : QApplication::topLevelWidgets())
            found += ambiguous(textsOf(*window));
        for (int pane = 0; pane <= PreferencesTabViewController::aboutPane; ++pane) {
            windows.preferences.selectPane(pane);
            QTRY_COMPARE(windows.preferences.selectedPane(), pane);
            found += ambiguous(textsOf(windows.preferences));
        }
        QCOMPARE(found, QStringList());
    }

    void creditsFit_data() { addRows({"de", "en", "fr"}); }
    void creditsFit()
    {
        const auto [language] = row<1>();
        Translations::install(QLocale(language));
        QCoreApplication::setApplicationVersion(u"1.2.3"_qs);
        Windows windows;
        windows.preferences.selectPane(PreferencesTabViewController::aboutPane);
        auto& credits = *windows.preferences.findChild<QTextBrowser*>();
        QTRY_VERIFY(credits.isVisible());
        QVERIFY(credits.document()->size().height() <= credits.viewport()->height());
    }
};

QTEST_MAIN(TranslationsTest)
#include "TranslationsTest.moc"
