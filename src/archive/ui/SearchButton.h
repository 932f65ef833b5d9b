#pragma once

#include <QPushButton>

namespace kalvo {

/** Starts and ends a search. The captions begin with blanks, which leave room for the icon. */
class SearchButton : public QPushButton {
    Q_OBJECT

public:
    explicit SearchButton(QWidget* parent = nullptr);

    void ShowRunning(bool running);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool running_ = false;
};

} // namespace kalvo
