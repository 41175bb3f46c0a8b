#pragma once

#include <QComboBox>

class TagField;

/// The genre field: a tag field with the list of genres to choose from and completion while typing.
class GenreBox : public QComboBox {
    Q_OBJECT

public:
    explicit GenreBox(QWidget* parent = nullptr);

    TagField& field() const { return *field_; }

    void showPopup() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void complete(const QString& typed);
    void noteText(const QString& text);
    void applyChoice(int index);

    TagField* field_;
    QString typed_; ///< what the user has typed last
    QString shown_; ///< the same with its completion
};
