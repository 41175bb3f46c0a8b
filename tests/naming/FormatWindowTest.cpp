#include "library/ui/EditorPane.h"
#include "library/ui/QuickLookTableView.h"
#include "naming/FileNameFormat.h"
#include "naming/ui/FileFormatController.h"
#include "naming/ui/TokenButton.h"
#include "naming/ui/TokenChip.h"
#include "naming/ui/TokenField.h"
#include "support/OpenWindow.h"
#include "support/Rows.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QTranslator>

namespace {

struct FieldTitles : QTranslator {
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        return qstrcmp(context, "FileNameFormat") == 0 ? u'<' + QLatin1String(source) + u'>' : QString();
    }
};

} // namespace

class FormatWindowTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        open_.emplace(u"1.mp3 2.mp3 3.mp3"_qs, u"untagged"_qs);
        open_->window.show();
        for (int i = 0; i < 3; ++i) {
            open_->record(i).title = i == 1 ? u"Verse"_qs : u"Intro"_qs;
            open_->record(i).trackNumber = QString::number(i + 1) + u"/12"_qs;
        }
        open_->controller.selectAll();
        open_->controller.showFormatWindow();
        QVERIFY(QTest::qWaitForWindowActive(window()));
        field().setFocus();
    }

    // the format | keys | the format then
    void isEditedByKeys_data()
    {
        addRows({"Title | End x | Title,x", "Title | Home a _ | a_,Title", "Title,x,Track | End Backspace | Title,x",
                 "Title,x,Track | Home Delete | x,Track", "Title,Track | Home Right - | Title,-,Track",
                 "Title | Ctrl+A x | x", "Title,-,Track | Home Shift+Right Ctrl+X End Ctrl+V | -,Track,Title",
                 "Title,-,Track | Ctrl+A Ctrl+C End Ctrl+V | Title,-,Track,Title,-,Track",
                 "Title,-,Track | End Alt+Left | Title,Track,-", "Title,-,Track | Home Alt+Right | -,Title,Track",
                 "Title,abc,Track | End Alt+Left Alt+Left | Track,Title,abc", "Title | End Alt+Right | Title",
                 "Title,-,Track | End Backspace Ctrl+Z | Title,-,Track", "Title | End Return | Title",
                 "x | Ctrl+A T i t l e Return Backspace _ | _", "Title | Ctrl+A Delete | ",
                 "Title,-,Track | Ctrl+Z | Title,-,Track",
                 "Album mix | Home Shift+Right Shift+Right Shift+Right Shift+Right Shift+Right Ctrl+X Ctrl+V x | "
                 "Albumx mix"});
    }
    void isEditedByKeys()
    {
        const auto [before, keys, after] = row<3>();
        field().setTokens(before.split(u','));
        for (const auto& key : keys.split(u' '))
            press(key);
        QCOMPARE(field().tokens().join(u','), after);
    }

    void tokensAreTheSameInEveryLanguage()
    {
        FieldTitles titles;
        QVERIFY(QCoreApplication::installTranslator(&titles));
        open_->controller.showFormatWindow();
        auto* opened = open_->window.findChildren<FileFormatController*>().last();
        QVERIFY(QTest::qWaitForWindowActive(opened));
        QCOMPARE(field().tokens(), FileNameFormat::defaultTokens());
        QCOMPARE(opened->findChild<TokenButton*>(u"Genre"_qs)->text(), u"<Genre>"_qs);
        for (const auto& typed : {u"<Title>"_qs, u"Title"_qs, u"Album Artist"_qs}) {
            const QStringList expected{typed == u"<Title>" ? u"Title"_qs : typed};
            field().setTokens({});
            field().setFocus();
            QTest::keyClicks(&field(), typed);
            QCOMPARE(field().tokens(), expected);
            QCOMPARE(chips(), 0);
            QTest::keyClick(&field(), Qt::Key_Tab);
            QCOMPARE(field().tokens(), expected);
            QCOMPARE(chips(), 1);
        }
        field().selectAll();
        field().copy();
        QCOMPARE(QApplication::clipboard()->text(), u"<Album Artist>"_qs);
    }

    void pastedTextIsLiteralAndOneLine()
    {
        QApplication::clipboard()->setImage(QImage(2, 2, QImage::Format_RGB32));
        press(u"Ctrl+A"_qs);
        press(u"Ctrl+V"_qs);
        QCOMPARE(field().tokens(), FileNameFormat::defaultTokens());
        field().setTokens({u"Title"_qs});
        QApplication::clipboard()->setText(u"a\nTitle\u2029b"_qs + QChar::ObjectReplacementCharacter);
        press(u"End"_qs);
        press(u"Ctrl+V"_qs);
        QCOMPARE(field().tokens(), QStringList({u"Title"_qs, u"a Title b"_qs}));
        field().selectAll();
        field().copy();
        QCOMPARE(QApplication::clipboard()->text(), u"Titlea Title b"_qs);
    }

    void chipsAreSelectedAndDraggedByTheMouse()
    {
        field().setTokens({u"Title"_qs, u" - "_qs});
        field().moveCursor(QTextCursor::Start);
        const int middle = static_cast<int>(TokenChip::size(u"Title"_qs, field().font()).width() / 2);
        const QPoint chip = field().cursorRect().topLeft() + QPoint(middle, 8);
        QTest::mouseClick(field().viewport(), Qt::LeftButton, {}, chip);
        QCOMPARE(field().textCursor().selectionStart(), 0);
        QCOMPARE(field().textCursor().selectionEnd(), 1);
        std::unique_ptr<QMimeData> dragged(TokenField::mimeDataFor(u"Genre"_qs));
        const QPoint end(field().viewport()->width() - 3, chip.y());
        QDragEnterEvent enter(end, Qt::CopyAction, dragged.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(field().viewport(), &enter);
        QVERIFY(enter.isAccepted());
        QDragMoveEvent move(end, Qt::CopyAction, dragged.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(field().viewport(), &move);
        QDropEvent drop(end, Qt::CopyAction, dragged.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(field().viewport(), &drop);
        QCOMPARE(field().tokens(), QStringList({u"Title"_qs, u" - "_qs, u"Genre"_qs}));
    }

    void fieldsAreChosenByDoubleClickAndKeyboard()
    {
        field().setTokens({});
        auto* genre = window()->findChild<TokenButton*>(u"Genre"_qs);
        QTest::mouseClick(genre, Qt::LeftButton);
        QCOMPARE(field().tokens(), QStringList());
        QTest::mouseDClick(genre, Qt::LeftButton);
        for (const auto key : {Qt::Key_Space, Qt::Key_Return})
            QTest::keyClick(window()->findChild<TokenButton*>(u"Disc"_qs), key);
        QCOMPARE(field().tokens(), QStringList({u"Genre"_qs, u"Disc"_qs, u"Disc"_qs}));
        QVERIFY(window()->isVisible());
    }

    // what has the keyboard | key | whether the files are renamed
    void returnRenamesOnlyOnTheButton_data()
    {
        addRows({"tokenField | Return | no", "tokenField | Enter | no", "plan | Return | no", "Genre | Return | no",
                 "default | Return | no", "rename | Return | yes", "rename | Space | yes", "plan | Ctrl+Enter | yes",
                 "Genre | Ctrl+Return | yes", "tokenField | Alt+R | yes"});
    }
    void returnRenamesOnlyOnTheButton()
    {
        const auto [name, key, renamed] = row<3>();
        field().setTokens({u"Track"_qs});
        const QPointer rename = window()->findChild<QPushButton*>(u"rename"_qs);
        auto* focused = window()->findChild<QWidget*>(name);
        focused->setFocus();
        const QKeyCombination pressed = QKeySequence(key)[0];
        QTest::keyClick(focused, pressed.key(), pressed.keyboardModifiers());
        // The mnemonic shows the button pressed for a moment.
        QTRY_VERIFY(!rename || !rename->isDown());
        QCOMPARE(open_->fileNames() != u"1.mp3 2.mp3 3.mp3"_qs, renamed == u"yes");
    }

    void theButtonIsOffWhereNothingWouldBeRenamed()
    {
        auto* rename = window()->findChild<QPushButton*>(u"rename"_qs);
        for (int i = 0; i < 3; ++i)
            open_->record(i).year = QString::number(i + 1);
        for (const auto& [token, isOn] : {std::pair{u"Year"_qs, false}, {u"Track"_qs, true}, {u"Album"_qs, false}}) {
            field().setTokens({token});
            QTRY_COMPARE(rename->isEnabled(), isOn);
            if (!isOn)
                press(u"Ctrl+Return"_qs);
        }
        QCOMPARE(open_->fileNames(), u"1.mp3 2.mp3 3.mp3"_qs);
        window()->findChild<QPushButton*>(u"default"_qs)->click();
        QCOMPARE(field().tokens(), FileNameFormat::defaultTokens());
        QTRY_VERIFY(rename->isEnabled());
        press(u"Ctrl+Z"_qs);
        QCOMPARE(field().tokens(), QStringList{u"Album"_qs});
    }

    void onlyWhatCannotChangeThePlanWorks()
    {
        QStringList works;
        for (const auto* menu : open_->window.menuBar()->findChildren<QMenu*>()) {
            for (const auto* action : menu->actions()) {
                if (action->isEnabled() && !action->isSeparator() && menu->isEnabled() && !menu->title().isEmpty())
                    works.append(action->text().remove(u'&').remove(u'…'));
            }
        }
        works.sort();
        QCOMPARE(works.join(u", "_qs), u"About Sonvika, Bring to Front, Columns, Full Screen, Minimise, Preferences, "
                                       "Quick Look, Quit, Send Feedback, Show in File Manager, Support Page"_qs);
        QTest::keyClick(open_->window.findChild<QuickLookTableView*>(), Qt::Key_Down);
        QCOMPARE(open_->list.selection().rows(), QList({0, 1, 2}));
        // What comes by other ways does not change it either.
        open_->open(u"v24.mp3"_qs);
        open_->select(u"3"_qs);
        field().setTokens({u"Track"_qs});
        press(u"Ctrl+Return"_qs);
        QCOMPARE(open_->fileNames(), u"01.mp3 02.mp3 03.mp3 v24.mp3"_qs);
    }

    // way of closing | the files then
    void everyWayOfClosingStoresTheFormat_data()
    {
        addRows({"Ctrl+Return | 01.Intro.mp3 02.Verse.mp3 03.Intro.mp3", "Escape | 1.mp3 2.mp3 3.mp3",
                 "close | 1.mp3 2.mp3 3.mp3", "main window | 1.mp3 2.mp3 3.mp3", "again | 1.mp3 2.mp3 3.mp3"});
    }
    void everyWayOfClosingStoresTheFormat()
    {
        const auto [way, files] = row<2>();
        const QStringList format{u"Track"_qs, u"."_qs, u"Title"_qs};
        QCOMPARE(lockedParts(), 3);
        field().setTokens(format);
        if (way == u"close")
            window()->close();
        else if (way == u"main window")
            open_->window.close();
        else if (way == u"again")
            open_->controller.showFormatWindow();
        else
            press(way);
        QCOMPARE(FileNameFormat::storedTokens(open_->defaults), format);
        QCOMPARE(lockedParts(), way == u"again" ? 3 : 0);
        QCOMPARE(QDir(open_->folder.path(u"."_qs)).entryList(QDir::Files).join(u' '), files);
        QCOMPARE(open_->notifier.posted, QStringList());
    }

private:
    FileFormatController* window() { return open_->window.findChild<FileFormatController*>(); }
    /// That of the window that was opened last.
    TokenField& field()
    {
        return *open_->window.findChildren<FileFormatController*>().last()->findChild<TokenField*>();
    }
    void press(const QString& key)
    {
        const QKeyCombination pressed = QKeySequence(key)[0];
        if (key.size() == 1)
            QTest::keyClicks(&field(), key);
        else
            QTest::keyClick(&field(), pressed.key(), pressed.keyboardModifiers());
    }
    int chips() { return static_cast<int>(field().toPlainText().count(QChar::ObjectReplacementCharacter)); }
    /// How many of the list, the editor and the search field can't be used.
    int lockedParts()
    {
        const auto& main = open_->window;
        return !main.findChild<QuickLookTableView*>()->isEnabled() + !main.findChild<EditorPane*>()->isEnabled()
               + !main.findChild<QLineEdit*>(u"searchField"_qs)->isEnabled();
    }

    std::optional<OpenWindow> open_;
};

QTEST_MAIN(FormatWindowTest)
#include "FormatWindowTest.moc"
