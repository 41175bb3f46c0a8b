#include "naming/ui/TokenField.h"

#include "naming/FileNameFormat.h"

#include <QAbstractTextDocumentLayout>
#include <QJsonArray>
#include <QJsonDocument>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>
#include <utility>

namespace {

constexpr int visibleLines = 2;

QStringList tokensOf(const QTextDocument& document, int begin, int end)
{
    QStringList tokens;
    QString literal;
    const auto finishLiteral = [&] {
        if (!literal.isEmpty())
            tokens.append(std::exchange(literal, {}));
    };
    for (auto block = document.begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextFragment fragment = part.fragment();
            const bool isChip = fragment.charFormat().objectType() == TokenChip::objectType;
            for (int i = std::max(begin, fragment.position());
                 i < std::min(end, fragment.position() + fragment.length()); ++i) {
                if (isChip) {
                    finishLiteral();
                    tokens.append(TokenChip::title(fragment.charFormat()));
                } else {
                    literal += fragment.text()[i - fragment.position()];
                }
            }
        }
    }
    finishLiteral();
    return tokens;
}

void insert(QTextCursor& cursor, const QStringList& tokens)
{
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    for (const auto& token : tokens) {
        if (FileNameFormat::isFieldToken(token))
            cursor.insertText(QString(QChar::ObjectReplacementCharacter), TokenChip::format(token));
        else
            cursor.insertText(token, QTextCharFormat());
    }
    cursor.endEditBlock();
}

} // namespace

const QString TokenField::tokenType = QStringLiteral("application/x-org.sonvika.sonvika.tokens");

TokenField::TokenField(QWidget* parent) : QTextEdit(parent), chips_(new TokenChip::Renderer(*this))
{
    document()->documentLayout()->registerHandler(TokenChip::objectType, chips_);
    setAcceptRichText(false);
    setTabChangesFocus(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    connect(this, &QTextEdit::textChanged, this, &TokenField::noticeChange);
    connect(this, &QTextEdit::selectionChanged, viewport(), qOverload<>(&QWidget::update));
}

QStringList TokenField::tokens() const
{
    return tokensOf(*document(), 0, document()->characterCount());
}

void TokenField::setTokens(const QStringList& tokens)
{
    QTextCursor cursor(document());
    cursor.select(QTextCursor::Document);
    insert(cursor, tokens);
}

void TokenField::insertTokens(const QStringList& tokens)
{
    QTextCursor cursor = textCursor();
    insert(cursor, tokens);
    setTextCursor(cursor);
}

QSize TokenField::sizeHint() const
{
    const auto line = TokenChip::size(QStringLiteral("X"), font()).height();
    const qreal height = visibleLines * line + 2 * (document()->documentMargin() + frameWidth());
    return {QTextEdit::sizeHint().width(), static_cast<int>(height) + visibleLines};
}

void TokenField::noticeChange()
{
    if (isRepairing_)
        return;
    repairFormats();
    setAccessibleDescription(tokens().join(QStringLiteral(", ")));
    emit tokensChanged();
}

void TokenField::repairFormats()
{
    isRepairing_ = true;
    for (int i = 0; i < document()->characterCount() - 1; ++i) {
        const bool looksLikeChip = document()->characterAt(i) == QChar::ObjectReplacementCharacter;
        if (looksLikeChip == isChip(i))
            continue;
        QTextCursor cursor(document());
        cursor.setPosition(i);
        cursor.setPosition(i + 1, QTextCursor::KeepAnchor);
        if (looksLikeChip) {
            cursor.removeSelectedText();
            --i;
        } else {
            cursor.setCharFormat(QTextCharFormat());
        }
    }
    isRepairing_ = false;
}

void TokenField::makeChipsOfTitles()
{
    const QStringList now = tokens();
    int position = 0;
    for (const auto& token : now) {
        const int length = isChip(position) ? 1 : static_cast<int>(token.size());
        const bool isTitle = FileNameFormat::isFieldToken(token) && !isChip(position);
        QTextCursor cursor(document());
        cursor.setPosition(position);
        cursor.setPosition(position + length, QTextCursor::KeepAnchor);
        if (isTitle)
            insert(cursor, {token});
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
        event->ignore();
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
    makeChipsOfTitles();
    QTextEdit::focusOutEvent(event);
}

QMimeData* TokenField::mimeDataFor(const QStringList& tokens)
{
    auto* carried = new QMimeData;
    carried->setData(tokenType, QJsonDocument(QJsonArray::fromStringList(tokens)).toJson(QJsonDocument::Compact));
    carried->setText(tokens.join(QString()));
    return carried;
}

QMimeData* TokenField::createMimeDataFromSelection() const
{
    const QTextCursor cursor = textCursor();
    return mimeDataFor(tokensOf(*document(), cursor.selectionStart(), cursor.selectionEnd()));
}

bool TokenField::canInsertFromMimeData(const QMimeData* source) const
{
    return source->hasFormat(tokenType) || source->hasText();
}

void TokenField::insertFromMimeData(const QMimeData* source)
{
    QStringList inserted;
    const auto stored = QJsonDocument::fromJson(source->data(tokenType)).array();
    for (const auto& token : stored)
        inserted.append(token.toString());
    if (inserted.isEmpty())
        inserted.append(source->text());
    // A file name is one line.
    for (auto& token : inserted)
        token.replace(QLatin1Char('\n'), QLatin1Char(' ')).remove(QLatin1Char('\r'));
    insertTokens(inserted);
}
