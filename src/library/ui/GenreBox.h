#pragma once

#include <QComboBox>

class GenreField;

/// The genre field: a tag field with the list of genres to choose from.
class GenreBox : public QComboBox {
    Q_OBJECT

public:
    explicit GenreBox(QWidget* parent = nullptr);

    GenreField& field() const { return *field_; }

    void showPopup() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void applyChoice(int index);

    GenreField* field_;
};
