// What the tag editor is made of; what it does is in frmTagEditor.cpp.
#include "tags/ui/frmTagEditor.h"

#include "tags/TagJobs.h"
#include "tags/clsAudioGenie.h"
#include "tags/ui/PicturePage.h"
#include "tags/ui/TagColumn.h"
#include "widgets/CheckButton.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/ScreenFit.h"
#include "widgets/SkinStyle.h"

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QTabWidget>

#include <algorithm>

namespace kalvo {

namespace {

QStringList Genres() {
    QStringList genres;
    for (int index = 0; index < clsAudioGenie::ID3V1GetGenresW(); ++index)
        genres += clsAudioGenie::ID3V1GetGenreItemW(index);
    std::sort(genres.begin(), genres.end(),
              [](const QString& one, const QString& other) { return one.compare(other, Qt::CaseInsensitive) < 0; });
    return genres;
}

/** Scrolls up and down where the screen is too low for all fields. */
QScrollArea* Scrolled(QWidget& fields) {
    auto* area = new QScrollArea(fields.parentWidget());
    area->setObjectName(QStringLiteral("Felder"));
    area->setWidget(&fields);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const int bar = area->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    area->setMinimumSize(fields.minimumSizeHint().width() + bar, SkinStyle::Units().Of(12));
    return area;
}

} // namespace

frmTagEditor::frmTagEditor(const TagEditorSettings& settings, QWidget* parent)
    : QDialog(parent),
      settings_(settings),
      jobs_(new TagJobs(this)),
      head_(new ElidedLabel(this)),
      technical_(new ElidedLabel(this)),
      id3v1_(new TagColumn(tr("ID3v1"), this)),
      id3v2_(new TagColumn(tr("ID3v2"), this)),
      between_(new QWidget(this)),
      pages_(new QTabWidget(this)),
      pictures_(new PicturePage(this)),
      lyric_(new QPlainTextEdit(this)),
      state_(new ElidedLabel(this)),
      small_(nullptr),
      big_(nullptr),
      save_(nullptr),
      close_(new QPushButton(tr("Schließen"), this)) {
    setObjectName(QStringLiteral("frmTagEditor"));
    setWindowTitle(tr("Tag-Editor"));
    const FontUnits& units = SkinStyle::Units();
    head_->setObjectName(QStringLiteral("lblDatei"));
    head_->setAccessibleName(tr("Datei"));
    head_->setFont(units.Font(1, true));
    technical_->setObjectName(QStringLiteral("lblTechnik"));
    technical_->setAccessibleName(tr("Technische Daten"));
    technical_->SetTone(Tone::Dim);
    BuildColumns();
    auto* fields = new QWidget(this);
    auto* columns = new QHBoxLayout(fields);
    columns->setContentsMargins({});
    columns->setSpacing(units.Gap(2));
    columns->addWidget(id3v1_, 1);
    columns->addWidget(between_);
    columns->addWidget(id3v2_, 1);
    pages_->setObjectName(QStringLiteral("tabSeiten"));
    pages_->addTab(pictures_, tr("&Bilder"));
    pages_->addTab(BuildLyric(), tr("&Liedtext"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    column->setSpacing(units.Gap(2));
    column->addWidget(head_);
    column->addWidget(technical_);
    column->addWidget(Scrolled(*fields), 3);
    column->addWidget(pages_, 2);
    column->addLayout(BuildButtons());
    pictures_->SetFolder(settings_.PictureFolder());
    SetBig(settings_.IsBig());

    connect(pictures_, &PicturePage::Edited, this, &frmTagEditor::Touch);
    connect(jobs_, &TagJobs::Loaded, this, &frmTagEditor::Show);
    connect(jobs_, &TagJobs::Saved, this, &frmTagEditor::TakeSaved);
    connect(jobs_, &TagJobs::Finished, this, &frmTagEditor::EndSave);
    Show({});
    close_->setFocus(); // until there are fields to edit
}

frmTagEditor::~frmTagEditor() {
    settings_.SetPictureFolder(pictures_->Folder());
}

void frmTagEditor::BuildColumns() {
    constexpr int wide = 30;
    id3v1_->setObjectName(QStringLiteral("grpID3v1"));
    id3v1_->AddLine(TagField::V1Title, tr("Titel"), QStringLiteral("txtTitelV1"), wide);
    id3v1_->AddLine(TagField::V1Artist, tr("Interpret"), QStringLiteral("txtInterpretV1"), wide);
    id3v1_->AddLine(TagField::V1Album, tr("Album"), QStringLiteral("txtAlbumV1"), wide);
    id3v1_->AddLine(TagField::V1Year, tr("Jahr"), QStringLiteral("txtJahrV1"), 4);
    id3v1_->AddChoice(TagField::V1Genre, tr("Stil"), QStringLiteral("cboStilV1"), Genres(), false);
    id3v1_->AddLine(TagField::V1Track, tr("Titelnummer"), QStringLiteral("txtTrackV1"), 3);
    id3v1_->AddLine(TagField::V1Comment, tr("Kommentar"), QStringLiteral("txtKommentarV1"), wide);

    id3v2_->setObjectName(QStringLiteral("grpID3v2"));
    id3v2_->AddLine(TagField::Title, tr("Titel"), QStringLiteral("txtTitelV2"));
    id3v2_->AddLine(TagField::Artist, tr("Interpret"), QStringLiteral("txtInterpretV2"));
    id3v2_->AddLine(TagField::Album, tr("Album"), QStringLiteral("txtAlbumV2"));
    id3v2_->AddLine(TagField::Year, tr("Jahr"), QStringLiteral("txtJahrV2"), 4);
    id3v2_->AddChoice(TagField::Genre, tr("Stil"), QStringLiteral("cboStilV2"), Genres(), true);
    id3v2_->AddLine(TagField::Track, tr("Titelnummer"), QStringLiteral("txtTrackV2"), 9);
    id3v2_->AddLine(TagField::Comment, tr("Kommentar"), QStringLiteral("txtKommentarV2"));
    id3v2_->AddChoice(TagField::Rating, tr("Bewertung"), QStringLiteral("cboBewertung"),
                      {tr("Sehr gut"), tr("Gut"), tr("Mittel"), tr("Schlecht")}, true);
    id3v2_->AddLine(TagField::Bpm, tr("BPM"), QStringLiteral("txtBPM"), 7);
    id3v2_->AddLine(TagField::Composer, tr("Komponist"), QStringLiteral("txtKomponist"));
    for (const TagColumn* column : {id3v1_, id3v2_})
        connect(column, &TagColumn::Edited, this, &frmTagEditor::Touch);

    auto* arrows = new QVBoxLayout(between_);
    const int ring = SkinStyle::Units().Gap(1); // around a button that has the focus
    arrows->setContentsMargins(ring, 0, ring, 0);
    arrows->addStretch();
    const auto addArrow = [&](const QString& text, const QString& name, const QString& tip, bool toId3v1) {
        auto* arrow = new QPushButton(text, between_);
        arrow->setObjectName(name);
        arrow->setAccessibleName(tip);
        arrow->setToolTip(tip);
        arrow->setAutoDefault(false);
        arrow->setFixedWidth(SkinStyle::Units().Of(2.6));
        connect(arrow, &QPushButton::clicked, this, [this, toId3v1] { Copy(toId3v1); });
        arrows->addWidget(arrow);
    };
    addArrow(QStringLiteral("»"), QStringLiteral("cmdNachV2"), tr("ID3v1 in ID3v2 übernehmen"), false);
    addArrow(QStringLiteral("«"), QStringLiteral("cmdNachV1"), tr("ID3v2 in ID3v1 übernehmen"), true);
    arrows->addStretch();
}

QWidget* frmTagEditor::BuildLyric() {
    lyric_->setObjectName(QStringLiteral("txtLyrics"));
    lyric_->setAccessibleName(tr("Liedtext"));
    lyric_->setTabChangesFocus(true);
    connect(lyric_, &QPlainTextEdit::textChanged, this, [this] {
        if (showing_)
            return;
        lyricEdited_ = true;
        Touch();
    });
    return lyric_;
}

/** One of the two sizes of the window; the small one leaves pictures and lyrics out. */
CheckButton* frmTagEditor::AddSize(QBoxLayout& row, const QString& name, const QString& text, bool big) {
    auto* button = new CheckButton(text, this);
    button->setObjectName(name);
    button->setAccessibleName(tr("Fenstergröße: ") + text);
    connect(button, &CheckButton::clicked, this, [this, big] {
        settings_.SetBig(big);
        SetBig(big);
    });
    row.addWidget(button);
    return button;
}

void frmTagEditor::SetBig(bool big) {
    const FontUnits& units = SkinStyle::Units();
    small_->setChecked(!big);
    big_->setChecked(big);
    pages_->setVisible(big);
    layout()->activate();
    ResizeOnScreen(*this, {std::max(width(), units.Of(58)), big ? units.Of(58) : layout()->sizeHint().height()});
}

QLayout* frmTagEditor::BuildButtons() {
    auto* save = new IconButton(QStringLiteral("tag"), IconButton::Size::Normal, this);
    save->setText(tr("&Speichern"));
    save->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    save->setDefault(true);
    save->SetOn(true);
    save_ = save;
    save_->setObjectName(QStringLiteral("cmdSpeichern"));
    save_->setAccessibleName(tr("Geänderte Felder speichern"));
    close_->setObjectName(QStringLiteral("cmdSchliessen"));
    close_->setAutoDefault(false);
    state_->setObjectName(QStringLiteral("lblStand"));
    state_->setAccessibleName(tr("Stand"));
    state_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    connect(save_, &QPushButton::clicked, this, &frmTagEditor::Save);
    connect(close_, &QPushButton::clicked, this, &frmTagEditor::reject);
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, this, &frmTagEditor::Save);
    auto* row = new QHBoxLayout;
    small_ = AddSize(*row, QStringLiteral("cmdKlein"), tr("Klein"), false);
    big_ = AddSize(*row, QStringLiteral("cmdGross"), tr("Groß"), true);
    row->addWidget(state_, 1);
    row->addWidget(close_);
    row->addWidget(save_);
    return row;
}

} // namespace kalvo
