#pragma once

#include "tags/TitleRecord.h"

#include <QWidget>

class QBoxLayout;

namespace kalvo {

class ElidedLabel;
class IconButton;

/** The line below the archive grid: the selected title and what can be done with it. */
class SelectedTitleLine : public QWidget {
    Q_OBJECT

public:
    explicit SelectedTitleLine(QWidget* parent = nullptr);

    /** An empty record (without path): nothing is selected, the buttons are disabled. */
    void Show(const TitleRecord& record);
    /** Pre-listening fades the music out, or plays. */
    void ShowPreListening(bool on);
    /** A text in the place of the artist, until the next title is shown. */
    void ShowInPlaceOfArtist(const QString& text);

Q_SIGNALS:
    /** list: 1 or 2. */
    void AddToListRequested(int list);
    /** Left click on `Label5`. */
    void PreListenRequested();
    /** Any other mouse button on `Label5`, or the button beside it. Also without a title. */
    void HeadphonesRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    IconButton* AddListButton(QBoxLayout& row, int list);
    void AddListening(QBoxLayout& row);
    void ApplyLook();

    ElidedLabel* artist_; ///< `lblInterpret`, told to screen readers; the line shows it within the title
    ElidedLabel* title_;  ///< `lblTitel`
    ElidedLabel* path_;   ///< `lblPfad`
    QList<IconButton*> buttons_;
    IconButton* headphones_ = nullptr;
    IconButton* preListen_ = nullptr; ///< `Label5`
};

} // namespace kalvo
