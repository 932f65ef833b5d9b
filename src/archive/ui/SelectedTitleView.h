#pragma once

#include "tags/TitleRecord.h"

#include <QWidget>

class QBoxLayout;
class QPixmap;

namespace kalvo {

class CoverView;
class ElidedLabel;
class IconButton;

/** The selected title of the archive and what can be done with it: as a line below the grid or as a card beside it. */
class SelectedTitleView : public QWidget {
    Q_OBJECT

public:
    enum class Form { Line, Card };

    explicit SelectedTitleView(QWidget* parent = nullptr);

    void SetForm(Form form);
    /** To be called when the style has changed and all widgets have taken it: fonts set before would be lost. */
    void ApplyLook();
    /** Of the card, in logical pixels. */
    static int CardHeight();
    /** An empty record (without path): nothing is selected, the buttons are disabled. */
    void Show(const TitleRecord& record);
    /** The card's; null: none is known. */
    void ShowCover(const QPixmap& picture);
    /** Whether the card has a cover at all. */
    void SetCoverShown(bool shown);
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

private:
    IconButton* MakeButton(const QString& icon, const QString& name, const QString& accessibleName);
    void BuildButtons();
    void LayOutLine();
    void LayOutCard();
    void ShowTexts();

    Form form_ = Form::Line;
    TitleRecord record_;
    QString notice_; ///< in the place of the artist
    bool coverShown_ = true;
    CoverView* cover_;
    ElidedLabel* title_;  ///< `lblTitel` of the line: artist and title
    ElidedLabel* name_;   ///< the card's: the title alone
    ElidedLabel* artist_; ///< `lblInterpret`; of the line for screen readers alone
    ElidedLabel* album_;  ///< `lblAlbum`: album, year and genre, of the card alone
    ElidedLabel* path_;   ///< `lblPfad`, of the line alone
    QList<IconButton*> lists_;
    IconButton* headphones_ = nullptr;
    IconButton* preListen_ = nullptr; ///< `Label5`
};

} // namespace kalvo
