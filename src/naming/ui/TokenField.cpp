#include "naming/ui/TokenField.h"

#include "naming/FileNameFormat.h"
#include "naming/ui/TokenFieldAccessible.h"

#include <QAbstractTextDocumentLayout>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr int visibleLines = 2;

const QString literalKey = QStringLiteral("literal");

/// A chip, which stands for a field token, or a text between chips.
struct Piece {
    QString text;
    bool isChip;
};

std::vector<Piece> piecesOf(const QTextDocument& document, int begin, int end)
{
    std::vector<Piece> pieces;
    const QTextBlock block = document.begin();
    for (auto part = block.begin(); !part.atEnd(); ++part) {
        const QTextFragment fragment = part.fragment();
        const bool isChip = fragment.charFormat().objectType() == TokenChip::objectType;
        const int last = std::min(end, fragment.position() + fragment.length());
        for (int i = std::max(begin, fragment.position()); i < last; ++i) {
            if (isChip)
                pieces.push_back({TokenChip::token(fragment.charFormat()), true});
            else if (pieces.empty() || pieces.back().isChip)
                pieces.push_back({fragment.text()[i - fragment.position()], false});
            else
                pieces.back().text += fragment.text()[i - fragment.position()];
        }
    }
    return pieces;
}

/// A file name is one line, and what stands for chips inside the document is no text.
QString cleaned(QString text)
{
    static const QString separators = QStringLiteral("\n\r\u2028\u2029\ufdd0\ufdd1");
    for (const QChar separator : separators)
        text.replace(separator, QLatin1Char(' '));
    return text.remove(QChar::ObjectReplacementCharacter);
}

void insert(QTextCursor& cursor, const std::vector<Piece>& pieces)
{
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    for (const auto& piece : pieces) {
        if (piece.isChip)
            cursor.insertText(QString(QChar::ObjectReplacementCharacter), TokenChip::format(piece.text));
        else
            cursor.insertText(cleaned(piece.text), QTextCharFormat());
    }
    cursor.endEditBlock();
}

std::vector<Piece> piecesOf(const QStringList& tokens)
{
    std::vector<Piece> pieces;
    for (const auto& token : tokens)
        pieces.push_back({token, FileNameFormat::isFieldToken(token)});
    return pieces;
}

QMimeData* carrierOf(const std::vector<Piece>& pieces)
{
    QJsonArray tokens;
    QString text;
    for (const auto& piece : pieces) {
        tokens.append(piece.isChip ? QJsonValue(piece.text) : QJsonValue(QJsonObject{{literalKey, piece.text}}));
        text += piece.isChip ? FileNameFormat::shownTitle(piece.text) : piece.text;
    }
    auto* carrier = new QMimeData;
    carrier->setData(TokenField::tokenType, QJsonDocument(tokens).toJson(QJsonDocument::Compact));
    carrier->setText(text);
    return carrier;
}

std::vector<Piece> piecesIn(const QMimeData& carrier)
{
    std::vector<Piece> pieces;
    const auto tokens = QJsonDocument::fromJson(carrier.data(TokenField::tokenType)).array();
    for (const auto& token : tokens) {
        const QString text = token.toString();
        const bool isChip = FileNameFormat::isFieldToken(text);
        pieces.push_back({isChip ? text : text + token.toObject()[literalKey].toString(), isChip});
    }
    if (pieces.empty() && !cleaned(carrier.text()).isEmpty())
        pieces.push_back({carrier.text(), false});
    return pieces;
}

} // namespace

const QString TokenField::tokenType = QStringLiteral("application/x-org.sonvika.sonvika.tokens");

TokenField::TokenField(QWidget* parent) : QTextEdit(parent), chips_(new TokenChip::Renderer(*this))
{
    TokenFieldAccessible::install();
    document()->documentLayout()->registerHandler(TokenChip::objectType, chips_);
    setAcceptRichText(false);
    setTabChangesFocus(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setAccessibleDescription(tr("Fields and the text between them. Alt+Left and Alt+Right move a field."));
    connect(this, &QTextEdit::textChanged, this, &TokenField::tokensChanged);
    connect(this, &QTextEdit::selectionChanged, viewport(), qOverload<>(&QWidget::update));
}

QStringList TokenField::tokens() const
{
    QStringList tokens;
    for (const auto& piece : piecesOf(*document(), 0, document()->characterCount()))
        tokens.append(piece.isChip ? piece.text : FileNameFormat::tokenFor(piece.text));
    return tokens;
}

void TokenField::setTokens(const QStringList& tokens)
{
    QTextCursor cursor(document());
    cursor.select(QTextCursor::Document);
    insert(cursor, piecesOf(tokens));
    document()->clearUndoRedoStacks();
}

void TokenField::insertTokens(const QStringList& tokens)
{
    QTextCursor cursor = textCursor();
    insert(cursor, piecesOf(tokens));
    setTextCursor(cursor);
}

QSize TokenField::sizeHint() const
{
    const auto line = TokenChip::size(QStringLiteral("X"), font()).height();
    const qreal height = visibleLines * line + 2 * (document()->documentMargin() + frameWidth());
    return {QTextEdit::sizeHint().width(), static_cast<int>(height) + visibleLines};
}

void TokenField::makeChipsOfTitles()
{
    int position = 0;
    for (const auto& piece : piecesOf(*document(), 0, document()->characterCount())) {
        const int length = piece.isChip ? 1 : static_cast<int>(piece.text.size());
        const QString token = FileNameFormat::tokenFor(piece.text);
        const bool isTitle = !piece.isChip && FileNameFormat::isFieldToken(token);
        QTextCursor cursor(document());
        cursor.setPosition(position);
        cursor.setPosition(position + length, QTextCursor::KeepAnchor);
        if (isTitle)
            insert(cursor, {{token, true}});
        position += isTitle ? 1 : length;
    }
}

bool TokenField::isChip(int position) const
{
    // The format at a cursor is that of the character before it.
    QTextCursor cursor(document());
    cursor.setPosition(std::min(position + 1, document()->characterCount() - 1));
    return cursor.position() == position + 1 && cursor.charFormat().objectType() == TokenChip::objectType;
}

int TokenField::chipAt(const QPoint& point) const
{
    const int position = document()->documentLayout()->hitTest(
        point + QPoint(horizontalScrollBar()->value(), verticalScrollBar()->value()), Qt::ExactHit);
    return position >= 0 && isChip(position) ? position : -1;
}

void TokenField::selectChip(int position)
{
    QTextCursor cursor(document());
    cursor.setPosition(position);
    cursor.setPosition(position + 1, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void TokenField::moveChip(int step)
{
    const QTextCursor cursor = textCursor();
    int chip = cursor.selectionStart();
    if (!isChip(chip))
        --chip;
    if (chip < 0 || !isChip(chip))
        return;
    int target = chip;
    do {
        target += step;
    } while (target + step >= 0 && target + step < document()->characterCount() - 1 && !isChip(target)
             && !isChip(target + step));
    if (target < 0 || target >= document()->characterCount() - 1)
        return;
    QTextCursor mover(document());
    mover.beginEditBlock();
    mover.setPosition(chip);
    mover.setPosition(chip + 1, QTextCursor::KeepAnchor);
    const QTextCharFormat format = mover.charFormat();
    mover.removeSelectedText();
    mover.setPosition(target);
    mover.insertText(QString(QChar::ObjectReplacementCharacter), format);
    mover.endEditBlock();
    selectChip(target);
}

void TokenField::paintEvent(QPaintEvent* event)
{
    QTextEdit::paintEvent(event);
    QPainter painter(viewport());
    chips_->paintSelected(painter);
}

void TokenField::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        makeChipsOfTitles();
        return;
    }
    if (event->modifiers() == Qt::AltModifier && (key == Qt::Key_Left || key == Qt::Key_Right)) {
        moveChip(key == Qt::Key_Left ? -1 : 1);
        return;
    }
    QTextEdit::keyPressEvent(event);
}

void TokenField::mousePressEvent(QMouseEvent* event)
{
    const int chip = event->button() == Qt::LeftButton ? chipAt(event->position().toPoint()) : -1;
    const QTextCursor cursor = textCursor();
    const bool isSelected = chip >= cursor.selectionStart() && chip < cursor.selectionEnd();
    if (chip >= 0 && !isSelected && event->modifiers() == Qt::NoModifier)
        selectChip(chip);
    pressedChip_ = chip;
    QTextEdit::mousePressEvent(event);
}

void TokenField::mouseReleaseEvent(QMouseEvent* event)
{
    QTextEdit::mouseReleaseEvent(event);
    const int chip = std::exchange(pressedChip_, -1);
    if (chip >= 0 && chip == chipAt(event->position().toPoint()) && !textCursor().hasSelection())
        selectChip(chip);
}

void TokenField::mouseDoubleClickEvent(QMouseEvent* event)
{
    const int chip = chipAt(event->position().toPoint());
    if (chip >= 0)
        selectChip(chip);
    else
        QTextEdit::mouseDoubleClickEvent(event);
}

void TokenField::focusOutEvent(QFocusEvent* event)
{
    // A menu over the field, or another window, does not end the typing.
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        makeChipsOfTitles();
    QTextEdit::focusOutEvent(event);
}

QMimeData* TokenField::mimeDataFor(const QString& token)
{
    return carrierOf({{token, true}});
}

QMimeData* TokenField::createMimeDataFromSelection() const
{
    const QTextCursor cursor = textCursor();
    return carrierOf(piecesOf(*document(), cursor.selectionStart(), cursor.selectionEnd()));
}

bool TokenField::canInsertFromMimeData(const QMimeData* source) const
{
    return source->hasFormat(tokenType) || source->hasText();
}

void TokenField::insertFromMimeData(const QMimeData* source)
{
    const auto pieces = piecesIn(*source);
    if (pieces.empty())
        return;
    QTextCursor cursor = textCursor();
    insert(cursor, pieces);
    setTextCursor(cursor);
}
