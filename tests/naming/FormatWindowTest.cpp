#include "app/ui/MainWindow.h"
#include "fakes/Library.h"
#include "library/ui/EditorPane.h"
#include "library/ui/QuickLookTableView.h"
#include "naming/FileNameFormat.h"
#include "naming/ui/FileFormatController.h"
#include "naming/ui/TokenButton.h"
#include "naming/ui/TokenChip.h"
#include "naming/ui/TokenField.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTableView>
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
        folder_ = std::make_unique<ScratchFolder>();
        library_ = std::make_unique<Library>();
        main_ = std::make_unique<MainWindow>(library_->controller, library_->list, library_->drops, library_->art,
                                             library_->artworkDrops, library_->recent, library_->defaults);
        main_->show();
        for (const auto& name : {u"1.mp3"_qs, u"2.mp3"_qs, u"3.mp3"_qs})
            QVERIFY(library_->loader.openPath(folder_->copy(u"untagged.mp3"_qs, name)));
        const QStringList titles{u"Intro"_qs, u"Verse"_qs, u"Intro"_qs};
        for (int i = 0; i < titles.size(); ++i) {
            auto& record = *library_->list.content()[static_cast<std::size_t>(i)];
            record.title = titles[i];
            record.trackNumber = QString::number(i + 1) + u"/12"_qs;
        }
        library_->controller.selectAll();
        library_->controller.showFormatWindow();
        QVERIFY(QTest::qWaitForWindowActive(window()));
        field().setFocus();
    }
    void cleanup()
    {
        main_.reset();
        library_.reset();
        folder_.reset();
    }

    // the format | keys, separated by blanks: "C-" with Ctrl, "A-" with Alt, "S-" with Shift | the format then
    void isEditedByKeys_data()
    {
        addRows({"Title | End x | Title,x", "Title | Home a _ | a_,Title", "Title,x,Track | End Backspace | Title,x",
                 "Title,x,Track | Home Delete | x,Track", "Title,Track | Home Right - | Title,-,Track",
                 "Title | C-A x | x", "Title,-,Track | Home S-Right C-X End C-V | -,Track,Title",
                 "Title,-,Track | C-A C-C End C-V | Title,-,Track,Title,-,Track",
                 "Title,-,Track | End A-Left | Title,Track,-", "Title,-,Track | Home A-Right | -,Title,Track",
                 "Title,abc,Track | End A-Left A-Left | Track,Title,abc", "Title | End A-Right | Title",
                 "Title,-,Track | End Backspace C-Z | Title,-,Track", "Title | End Return | Title",
                 "Title | C-A Delete | ", "Title,-,Track | C-Z | Title,-,Track",
                 "My Album mix | Home Right Right Right S-Right S-Right S-Right S-Right S-Right C-X C-V x | "
                 "My Albumx mix"});
    }
    void isEditedByKeys()
    {
        const auto [before, keys, after] = row<3>();
        field().setTokens(before.split(u','));
        for (const auto& key : keys.split(u' '))
            press(key);
        QCOMPARE(field().tokens().join(u','), after);
    }

    void typedTitlesBecomeChipsWhenTheFieldIsLeft()
    {
        field().setTokens({});
        QTest::keyClicks(&field(), u"Album"_qs);
        QCOMPARE(chips(), 0);
        QTest::keyClicks(&field(), u" Artist"_qs);
        QTest::keyClick(&field(), Qt::Key_Tab);
        QCOMPARE(field().tokens(), QStringList{u"Album Artist"_qs});
        QCOMPARE(chips(), 1);
    }

    void tokensAreTheSameInEveryLanguage()
    {
        FieldTitles titles;
        QVERIFY(QCoreApplication::installTranslator(&titles));
        library_->controller.showFormatWindow();
        auto* opened = main_->findChildren<FileFormatController*>().last();
        QVERIFY(QTest::qWaitForWindowActive(opened));
        QCOMPARE(field().tokens(), FileNameFormat::defaultTokens());
        const auto* genre = opened->findChild<TokenButton*>(u"Genre"_qs);
        QCOMPARE(genre->text(), u"<Genre>"_qs);
        for (const auto& typed : {u"<Title>"_qs, u"Title"_qs}) {
            field().setTokens({});
            field().setFocus();
            QTest::keyClicks(&field(), typed);
            QCOMPARE(field().tokens(), QStringList{u"Title"_qs});
            QCOMPARE(chips(), 0);
            QTest::keyClick(&field(), Qt::Key_Tab);
            QCOMPARE(field().tokens(), QStringList{u"Title"_qs});
            QCOMPARE(chips(), 1);
        }
        field().selectAll();
        field().copy();
        QCOMPARE(QApplication::clipboard()->text(), u"<Title>"_qs);
    }

    void pastedTextIsLiteralAndOneLine()
    {
        QApplication::clipboard()->setImage(QImage(2, 2, QImage::Format_RGB32));
        press(u"C-A"_qs);
        press(u"C-V"_qs);
        QCOMPARE(field().tokens(), FileNameFormat::defaultTokens());
        field().setTokens({u"Title"_qs});
        QApplication::clipboard()->setText(u"a\nTitle\u2029b"_qs + QChar::ObjectReplacementCharacter);
        press(u"End"_qs);
        press(u"C-V"_qs);
        QCOMPARE(field().tokens(), QStringList({u"Title"_qs, u"a Title b"_qs}));
        press(u"C-A"_qs);
        press(u"C-C"_qs);
        QCOMPARE(QApplication::clipboard()->text(), u"Titlea Title b"_qs);
    }

    void chipsAreSelectedAndDraggedByTheMouse()
    {
        field().setTokens({u"Title"_qs, u" - "_qs, u"Track"_qs});
        const QPoint chip = placeOf(0);
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
        QCOMPARE(field().tokens(), QStringList({u"Title"_qs, u" - "_qs, u"Track"_qs, u"Genre"_qs}));
    }

    void fieldsAreChosenByDoubleClickAndKeyboard()
    {
        field().setTokens({});
        auto& genre = *window()->findChild<TokenButton*>(u"Genre"_qs);
        QTest::mouseClick(&genre, Qt::LeftButton);
        QCOMPARE(field().tokens(), QStringList());
        QTest::mouseDClick(&genre, Qt::LeftButton);
        QCOMPARE(field().tokens(), QStringList{u"Genre"_qs});
        auto& disc = *window()->findChild<TokenButton*>(u"Disc"_qs);
        for (const auto key : {Qt::Key_Space, Qt::Key_Return})
            QTest::keyClick(&disc, key);
        QCOMPARE(field().tokens(), QStringList({u"Genre"_qs, u"Disc"_qs, u"Disc"_qs}));
        QVERIFY(window()->isVisible());
    }

    void showsPreviewAndPlan()
    {
        QCOMPARE(label(u"previewField"_qs), u"01 - Intro -  - .mp3"_qs);
        field().setTokens({u"Title"_qs});
        QCOMPARE(label(u"previewField"_qs), u"Intro.mp3"_qs);
        QTRY_COMPARE(label(u"summary"_qs), u"2 files will be renamed, 1 can't be"_qs);
        auto& plan = *window()->findChild<QTableView*>(u"plan"_qs);
        QCOMPARE(plan.model()->rowCount(), 3);
        window()->findChild<QCheckBox*>()->setChecked(true);
        QCOMPARE(plan.model()->rowCount(), 1);
        QCOMPARE(plan.model()->index(0, 0).data().toString(), u"3.mp3"_qs);
        field().setTokens({u"Track"_qs});
        QTRY_COMPARE(label(u"summary"_qs), u"3 files will be renamed"_qs);
        QCOMPARE(plan.model()->rowCount(), 3);
    }

    // way of closing | whether files are renamed
    void everyWayOfClosingStoresTheFormat_data()
    {
        addRows({"rename | yes", "Return | yes", "cancel | no", "Escape | no", "close | no", "main window | no",
                 "again | no"});
    }
    void everyWayOfClosingStoresTheFormat()
    {
        const auto [way, renames] = row<2>();
        QVERIFY(isLocked());
        field().setTokens({u"Track"_qs, u"."_qs, u"Title"_qs});
        if (way == u"rename" || way == u"cancel")
            QTest::mouseClick(button(way), Qt::LeftButton);
        else if (way == u"Return" || way == u"Escape")
            press(way);
        else if (way == u"close")
            window()->close();
        else if (way == u"main window")
            main_->close();
        else
            library_->controller.showFormatWindow();
        QCOMPARE(FileNameFormat::storedTokens(library_->defaults), QStringList({u"Track"_qs, u"."_qs, u"Title"_qs}));
        QCOMPARE(isLocked(), way == u"again");
        if (way == u"again")
            QCOMPARE(field().tokens(), QStringList({u"Track"_qs, u"."_qs, u"Title"_qs}));
        QCOMPARE(QFile::exists(folder_->path(u"01.Intro.mp3"_qs)), renames == u"yes");
        QCOMPARE(QFile::exists(folder_->path(u"1.mp3"_qs)), renames == u"no");
        QCOMPARE(library_->notifier.posted, QStringList());
    }

    void opensOnlyWithASelection()
    {
        window()->close();
        QTRY_VERIFY(!window());
        library_->controller.deselectAll();
        library_->controller.showFormatWindow();
        QVERIFY(!window() && !isLocked());
    }

private:
    FileFormatController* window() { return main_->findChild<FileFormatController*>(); }
    /// The one that was opened last.
    TokenField& field() { return *main_->findChildren<FileFormatController*>().last()->findChild<TokenField*>(); }
    QString label(const QString& name) { return window()->findChild<QLabel*>(name)->text(); }
    QPushButton* button(const QString& name)
    {
        if (name == u"rename")
            return window()->findChild<QPushButton*>(name);
        for (auto* found : window()->findChildren<QPushButton*>()) {
            if (found->objectName() != u"rename")
                return found;
        }
        return nullptr;
    }
    void press(QString key)
    {
        const Qt::KeyboardModifiers modifiers = key.startsWith(u"C-")   ? Qt::ControlModifier
                                                : key.startsWith(u"A-") ? Qt::AltModifier
                                                : key.startsWith(u"S-") ? Qt::ShiftModifier
                                                                        : Qt::NoModifier;
        if (modifiers != Qt::NoModifier)
            key.remove(0, 2);
        if (key.size() == 1 && modifiers == Qt::NoModifier)
            QTest::keyClicks(&field(), key);
        else
            QTest::keyClick(&field(), static_cast<Qt::Key>(QKeySequence(key)[0].key()), modifiers);
    }
    int chips() { return static_cast<int>(field().toPlainText().count(QChar::ObjectReplacementCharacter)); }
    /// The middle of the first chip.
    QPoint placeOf(int position)
    {
        QTextCursor cursor(field().document());
        cursor.setPosition(position);
        const QSizeF size = TokenChip::size(u"Title"_qs, field().font());
        return field().cursorRect(cursor).topLeft() + QPoint(static_cast<int>(size.width() / 2), 8);
    }
    /// Fails unless all three parts agree.
    bool isLocked()
    {
        const std::initializer_list<QWidget*> widgets{main_->findChild<QuickLookTableView*>(),
                                                      main_->findChild<EditorPane*>(),
                                                      main_->findChild<QLineEdit*>(u"searchField"_qs)};
        const auto locked = std::count_if(widgets.begin(), widgets.end(), [](auto* w) { return !w->isEnabled(); });
        if (locked != 0 && locked != 3)
            qFatal("%d of 3 parts are locked", static_cast<int>(locked));
        return locked == 3;
    }

    std::unique_ptr<ScratchFolder> folder_;
    std::unique_ptr<Library> library_;
    std::unique_ptr<MainWindow> main_;
};

QTEST_MAIN(FormatWindowTest)
#include "FormatWindowTest.moc"
