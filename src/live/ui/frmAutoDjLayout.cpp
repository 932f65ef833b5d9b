// The rows of the automatic DJ's window.

#include "live/AutoDjRefill.h"
#include "live/ui/ValueChoice.h"
#include "live/ui/frmAutoDj.h"
#include "widgets/ElidedLabel.h"
#include "widgets/MainButton.h"
#include "widgets/Named.h"
#include "widgets/ScreenFit.h"
#include "widgets/SkinStyle.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kMostDistance = 1000;
constexpr int kMostTitles = 99;

QFrame* Divider(QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

} // namespace

frmAutoDj::frmAutoDj(const Parts& parts, QWidget* parent)
    : QDialog(parent),
      parts_(parts),
      fill_(parts.source, parts.random, parts.lists, parts.clock),
      values_(new ValueChoice(parts.folder, this)),
      saved_(Named(new QComboBox(this), u"cmbAuswahl"_s, u"Gespeicherte Auswahl"_s)),
      hours_(Named(new QLineEdit(this), u"Text1"_s, u"Gesamtspielzeit in Stunden"_s)),
      firstList_(
          Named(new QRadioButton(u"Wiedergabeliste &1"_s, this), u"optWiedergabeliste1"_s, u"In Wiedergabeliste 1"_s)),
      bothLists_(Named(new QRadioButton(u"&Beide Wiedergabelisten"_s, this), u"optBeideWiedergabelisten"_s,
                       u"Abwechselnd in beide Wiedergabelisten"_s)),
      artistRule_(Named(new QCheckBox(u"Kein &Interpret zweimal innerhalb von"_s, this), u"chkInterpretAbstand"_s,
                        u"Kein Interpret zweimal innerhalb der Anzahl Titel"_s)),
      artistDistance_(MakeNumber(u"numInterpretAbstand"_s, u"Abstand in Titeln"_s, kMostDistance)),
      playedRule_(Named(new QCheckBox(u"&Heute gespielte Titel auslassen"_s, this), u"chkHeuteGespielt"_s,
                        u"Heute gespielte Titel auslassen"_s)),
      versionRule_(Named(new QCheckBox(u"Andere Fassungen eines Titels auslassen"_s, this), u"chkAndereFassungen"_s,
                         u"Andere Fassungen eines Titels auslassen"_s)),
      refill_(Named(new QCheckBox(u"&Nachfüllen, sobald weniger Titel übrig sind als"_s, this), u"chkNachfuellen"_s,
                    u"Nachfüllen"_s)),
      refillBelow_(MakeNumber(u"numNachfuellen"_s, u"Titel, die übrig bleiben sollen"_s, kMostTitles)),
      refillState_(Named(new ElidedLabel(this), u"lblNachfuellen"_s, u"Stand des Nachfüllens"_s)),
      progress_(Named(new QProgressBar(this), u"ProgressBar1"_s, u"Fortschritt"_s)),
      percent_(Named(new QLabel(this), u"lblProzent"_s, u"Fortschritt in Prozent"_s)),
      told_(Named(new ElidedLabel(this), u"lblMeldung"_s, u"Meldung"_s)) {
    setObjectName(u"frmAutoDj"_s);
    setWindowTitle(u"Automatischer DJ"_s);
    const FontUnits& units = SkinStyle::Units();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    column->setSpacing(units.Gap(3));
    column->addWidget(values_, 1);
    column->addLayout(BuildSaved());
    column->addWidget(Divider(this));
    column->addLayout(BuildGoal());
    column->addLayout(BuildRules());
    column->addWidget(Divider(this));
    column->addLayout(BuildRefill());
    column->addLayout(BuildEnd());
    ResizeOnScreen(*this, {units.Of(52), units.Of(48)});
    connect(values_, &ValueChoice::ListsWanted, this, &frmAutoDj::ListsWanted);
    connect(&fill_, &AutoDjFill::Progress, this, &frmAutoDj::ShowProgress);
    connect(&fill_, &AutoDjFill::Finished, this, &frmAutoDj::End);
    connect(&parts_.refill, &AutoDjRefill::Changed, this, &frmAutoDj::ShowRefill);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &frmAutoDj::Keep); // ends with the window still open
    ShowProgress(0);
    values_->FocusSearch();
}

QPushButton* frmAutoDj::AddButton(QBoxLayout& row, const QString& name, const QString& text, const QString& what,
                                  void (frmAutoDj::*act)()) {
    auto* button = Named(new QPushButton(text, this), name, what);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, act);
    row.addWidget(button);
    return button;
}

QSpinBox* frmAutoDj::MakeNumber(const QString& name, const QString& what, int highest) {
    auto* number = Named(new QSpinBox(this), name, what);
    number->setRange(1, highest);
    return number;
}

QBoxLayout* frmAutoDj::BuildSaved() {
    saved_->setEditable(true);
    saved_->setInsertPolicy(QComboBox::NoInsert);
    saved_->lineEdit()->setPlaceholderText(u"Name der Auswahl"_s);
    saved_->lineEdit()->setAccessibleName(saved_->accessibleName());
    connect(saved_, &QComboBox::activated, this, &frmAutoDj::LoadSaved);
    auto* caption = new QLabel(u"&Gespeicherte Auswahl"_s, this);
    caption->setBuddy(saved_);
    auto* row = new QHBoxLayout;
    row->addWidget(caption);
    row->addWidget(saved_, 1);
    AddButton(*row, u"cmdAuswahlSpeichern"_s, u"S&peichern"_s, u"Auswahl unter diesem Namen speichern"_s,
              &frmAutoDj::SaveSelection);
    AddButton(*row, u"cmdAuswahlLoeschen"_s, u"&Löschen"_s, u"Gespeicherte Auswahl löschen"_s,
              &frmAutoDj::RemoveSelection);
    return row;
}

QBoxLayout* frmAutoDj::BuildGoal() {
    auto* caption = new QLabel(u"Gesamt&spielzeit"_s, this);
    caption->setBuddy(hours_);
    hours_->setAlignment(Qt::AlignRight);
    hours_->setFixedWidth(SkinStyle::Units().Of(5));
    auto* lists = new QButtonGroup(this);
    lists->addButton(firstList_);
    lists->addButton(bothLists_);
    auto* row = new QHBoxLayout;
    row->addWidget(caption);
    row->addWidget(hours_);
    row->addWidget(new QLabel(u"Stunden"_s, this));
    row->addStretch();
    row->addWidget(firstList_);
    row->addSpacing(SkinStyle::Units().Gap(4));
    row->addWidget(bothLists_);
    return row;
}

QBoxLayout* frmAutoDj::BuildRules() {
    artistDistance_->setSuffix(u" Titeln"_s);
    connect(artistRule_, &QCheckBox::toggled, artistDistance_, &QWidget::setEnabled);
    auto* artist = new QHBoxLayout;
    artist->addWidget(artistRule_);
    artist->addWidget(artistDistance_);
    artist->addStretch();
    auto* others = new QHBoxLayout;
    others->addWidget(playedRule_);
    others->addSpacing(SkinStyle::Units().Gap(6));
    others->addWidget(versionRule_);
    others->addStretch();
    auto* column = new QVBoxLayout;
    column->setSpacing(SkinStyle::Units().Gap(1.5));
    column->addLayout(artist);
    column->addLayout(others);
    return column;
}

QBoxLayout* frmAutoDj::BuildRefill() {
    refill_->setToolTip(u"Füllt Wiedergabeliste 1, oder beide, mit Titeln der jetzigen Auswahl, auch bei geschlossenem "
                        u"Fenster. Für eine andere Auswahl aus- und wieder einschalten."_s);
    connect(refill_, &QCheckBox::clicked, this, &frmAutoDj::SwitchRefill);
    connect(refillBelow_, &QSpinBox::valueChanged, this, &frmAutoDj::ChangeRefillBelow);
    refillState_->SetTone(Tone::Dim);
    auto* row = new QHBoxLayout;
    row->addWidget(refill_);
    row->addWidget(refillBelow_);
    row->addWidget(refillState_, 1);
    return row;
}

QBoxLayout* frmAutoDj::BuildEnd() {
    const FontUnits& units = SkinStyle::Units();
    progress_->setTextVisible(false);
    progress_->setFixedHeight(units.Of(1.35));
    percent_->setFixedWidth(units.Of(4));
    percent_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* bar = new QHBoxLayout;
    bar->addWidget(progress_, 1);
    bar->addWidget(percent_);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(told_, 1);
    auto* close = AddButton(*buttons, u"Command2"_s, u"Schließen"_s, u"Schließen"_s, &frmAutoDj::reject);
    start_ = AddButton(*buttons, u"Command1"_s, u"&Füllen"_s, u"Wiedergabeliste füllen"_s, &frmAutoDj::Fill);
    for (QPushButton* button : {close, start_})
        button->setMinimumWidth(units.Of(7.2));
    MakeMain(*start_);
    auto* column = new QVBoxLayout;
    column->setSpacing(units.Gap(2));
    column->addLayout(bar);
    column->addLayout(buttons);
    return column;
}

} // namespace kalvo
