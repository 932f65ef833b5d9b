#include "live/ui/frmVorpruefung.h"

#include "base/Clock.h"
#include "live/PreshowCheck.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/Icons.h"
#include "widgets/Named.h"
#include "widgets/PlainTip.h"
#include "widgets/SilenceParts.h"
#include "widgets/SkinStyle.h"

#include <QApplication>
#include <QClipboard>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QTreeWidget>

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

enum PreshowColumn { Where, What, Way, ColumnCount };
constexpr int kFinding = Qt::UserRole; ///< index among the findings; of groups -1

PreshowSeverity Worst(const QList<PreshowFinding>& findings) {
    return findings.isEmpty() ? PreshowSeverity::Good : findings.constFirst().severity;
}

QString SignOf(PreshowSeverity severity) {
    return severity == PreshowSeverity::Error  ? u"error"_s
           : severity == PreshowSeverity::Hint ? u"warning"_s
                                               : u"check"_s;
}

QColor ColourOfSign(PreshowSeverity severity) {
    const Skin& skin = SkinStyle::Colours();
    return severity == PreshowSeverity::Good ? skin.cued : skin.warning;
}

} // namespace

frmVorpruefung::frmVorpruefung(PreshowCheck& check, const Clock& clock, QWidget* parent)
    : QDialog(parent),
      check_(check),
      clock_(clock),
      sign_(new QLabel(this)),
      verdict_(new QLabel(this)),
      state_(new ElidedLabel(this)),
      bar_(new QProgressBar(this)),
      findings_(new QTreeWidget(this)),
      copy_(new QPushButton(u"Bericht kopieren"_s, this)),
      close_(new QPushButton(u"Schließen"_s, this)),
      cancel_(new QPushButton(u"Abbrechen"_s, this)),
      again_(new IconButton(u"refresh"_s, IconButton::Size::Normal, this)) {
    setObjectName(u"frmVorpruefung"_s);
    setWindowTitle(u"Vorprüfung"_s);
    NameControls();
    Arrange();
    Connect();
    ApplyLook();
    ShowState();
}

frmVorpruefung::~frmVorpruefung() {
    SilenceParts(*this);
    check_.disconnect(this);
    check_.Cancel();
}

void frmVorpruefung::NameControls() {
    again_->setText(u"Erneut prüfen"_s);
    again_->SetOn(true);
    Named(verdict_, u"lblUrteil"_s, u"Ergebnis der Vorprüfung"_s);
    Named(state_, u"lblStand"_s, u"Stand der Vorprüfung"_s);
    Named(bar_, u"ProgressBar1"_s, u"Fortschritt"_s);
    Named(findings_, u"Befunde"_s, u"Befunde"_s);
    Named(copy_, u"cmdKopieren"_s, copy_->text());
    Named(close_, u"cmdSchliessen"_s, close_->text());
    Named(cancel_, u"cmdAbbrechen"_s, u"Vorprüfung abbrechen"_s);
    Named(again_, u"cmdPruefen"_s, again_->text());
    copy_->setToolTip(u"Legt alle Zeilen als Text in die Zwischenablage"_s);
    again_->setToolTip(u"Prüft alles noch einmal; unveränderte Titel sind sofort bekannt (Strg+R)"_s);
    auto* again = new QShortcut(Qt::CTRL | Qt::Key_R, this);
    connect(again, &QShortcut::activated, again_, &QPushButton::click);
    for (QPushButton* button : {copy_, close_, cancel_, static_cast<QPushButton*>(again_)})
        button->setAutoDefault(false);
    findings_->setHeaderLabels({u"Wo"_s, u"Befund"_s, {}});
    findings_->setWordWrap(true);
    findings_->setRootIsDecorated(false);
    findings_->setItemsExpandable(false);
    findings_->setIndentation(0);
    findings_->setSelectionMode(QTreeWidget::SingleSelection);
    findings_->setAllColumnsShowFocus(true);
    findings_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    findings_->header()->setSectionsMovable(false);
    findings_->header()->setMinimumSectionSize(1);
    findings_->header()->setStretchLastSection(false);
    findings_->header()->setSectionResizeMode(Where, QHeaderView::Interactive);
    findings_->header()->setSectionResizeMode(What, QHeaderView::Stretch);
    findings_->header()->setSectionResizeMode(Way, QHeaderView::Fixed);
    bar_->setTextVisible(false);
    state_->SetTone(Tone::Dim);
}

void frmVorpruefung::Arrange() {
    auto* head = new QGridLayout;
    head->addWidget(sign_, 0, 0, 2, 1);
    head->addWidget(verdict_, 0, 1);
    head->addWidget(state_, 1, 1);
    head->addWidget(bar_, 0, 2, 2, 1, Qt::AlignVCenter);
    head->setColumnStretch(1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(SkinStyle::Units().Gap(2));
    buttons->addWidget(copy_);
    buttons->addStretch(1);
    buttons->addWidget(close_);
    buttons->addWidget(cancel_);
    buttons->addWidget(again_);
    auto* column = new QVBoxLayout(this);
    column->addLayout(head);
    column->addWidget(findings_, 1);
    column->addLayout(buttons);
}

void frmVorpruefung::Connect() {
    connect(&check_, &PreshowCheck::Changed, this, &frmVorpruefung::ShowState);
    connect(again_, &QPushButton::clicked, &check_, &PreshowCheck::Start);
    connect(cancel_, &QPushButton::clicked, &check_, &PreshowCheck::Cancel);
    connect(close_, &QPushButton::clicked, this, &QDialog::reject);
    connect(copy_, &QPushButton::clicked, this, &frmVorpruefung::CopyReport);
    connect(findings_, &QTreeWidget::itemClicked, this, &frmVorpruefung::Follow);
    connect(findings_, &QTreeWidget::itemActivated, this, &frmVorpruefung::Follow);
    connect(findings_->header(), &QHeaderView::sectionResized, this, &frmVorpruefung::FitRows);
}

void frmVorpruefung::ShowState() {
    const bool running = check_.IsRunning();
    if (!running && check_.Count() == check_.Done())
        checkedAt_ = clock_.Now();
    bar_->setRange(0, static_cast<int>(std::max<qsizetype>(1, check_.Count())));
    bar_->setValue(static_cast<int>(check_.Done()));
    bar_->setVisible(running);
    cancel_->setEnabled(running);
    again_->setEnabled(!running);
    copy_->setEnabled(!check_.Findings().isEmpty());
    if (shown_ != check_.Findings())
        ShowFindings();
    ShowVerdict();
}

/** While it runs nothing is called ready; what was found already counts. */
void frmVorpruefung::ShowVerdict() {
    const bool running = check_.IsRunning();
    const PreshowSeverity worst = Worst(shown_);
    const bool open = worst == PreshowSeverity::Good && check_.Done() < check_.Count();
    verdict_->setText(!open ? Preshow::Verdict(shown_) : running ? u"Wird geprüft..."_s : u"Abgebrochen"_s);
    const FontUnits& units = SkinStyle::Units();
    const bool plain = open || (running && worst == PreshowSeverity::Good);
    sign_->setPixmap(Icons::Pixmap(plain ? u"refresh"_s : SignOf(worst),
                                   plain ? SkinStyle::Colours().dim : ColourOfSign(worst), units.Of(2.6),
                                   devicePixelRatioF()));
    if (running)
        state_->SetText(u"%1 von %2 Titeln geprüft"_s.arg(check_.Done()).arg(check_.Count()));
    else if (check_.Done() < check_.Count())
        state_->SetText(u"Nach %1 von %2 Titeln abgebrochen"_s.arg(check_.Done()).arg(check_.Count()));
    else
        state_->SetText(u"Geprüft um %1 Uhr"_s.arg(checkedAt_.toString(u"HH:mm"_s)));
}

void frmVorpruefung::ShowFindings() {
    if (const QTreeWidgetItem* item = findings_->currentItem())
        chosen_ = shown_.value(item->data(Where, kFinding).toLongLong());
    shown_ = check_.Findings();
    findings_->clear();
    QTreeWidgetItem* group = nullptr;
    const FontUnits& units = SkinStyle::Units();
    for (qsizetype i = 0; i < shown_.size(); ++i) {
        const PreshowFinding& finding = shown_.at(i);
        if (i == 0 || finding.severity != shown_.at(i - 1).severity) {
            group = new QTreeWidgetItem(findings_, {Preshow::GroupName(finding.severity)});
            group->setFont(Where, units.Font(1.15, true));
            group->setIcon(Where, Icons::Icon(SignOf(finding.severity), ColourOfSign(finding.severity)));
            group->setFlags(Qt::ItemIsEnabled);
            group->setFirstColumnSpanned(true);
            group->setData(Where, kFinding, -1);
            group->setSizeHint(Where, QSize(0, units.Of(2.3)));
        }
        const bool leads = finding.target.place != PreshowTarget::Place::None;
        auto* line = new QTreeWidgetItem(group, {finding.where, finding.text, leads ? u"›"_s : QString()});
        line->setData(Where, kFinding, i);
        line->setToolTip(Where, PlainTip(finding.where));
        line->setToolTip(What, PlainTip(finding.text));
        line->setTextAlignment(Way, Qt::AlignCenter);
        if (!leads)
            line->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        if (finding == chosen_)
            findings_->setCurrentItem(line);
    }
    findings_->expandAll();
    FitRows();
}

/** A tree does not make room for wrapped lines by itself. */
void frmVorpruefung::FitRows() {
    const FontUnits& units = SkinStyle::Units();
    const QFontMetrics metrics = findings_->fontMetrics();
    const int width = findings_->columnWidth(What) - units.Of(0.9);
    for (int group = 0; group < findings_->topLevelItemCount(); ++group) {
        QTreeWidgetItem* const head = findings_->topLevelItem(group);
        for (int row = 0; row < head->childCount(); ++row) {
            QTreeWidgetItem* const line = head->child(row);
            const int text =
                metrics.boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), Qt::TextWordWrap, line->text(What)).height();
            line->setSizeHint(What, QSize(0, std::max(units.TableRow(), text + units.Gap(2))));
        }
    }
}

void frmVorpruefung::Follow(const QTreeWidgetItem* item) {
    const PreshowFinding finding = shown_.value(item->data(Where, kFinding).toLongLong());
    if (finding.target.place != PreshowTarget::Place::None)
        Q_EMIT TargetChosen(finding.target);
}

void frmVorpruefung::CopyReport() {
    QApplication::clipboard()->setText(
        Preshow::Report(shown_, u"Kalvo - Vorprüfung vom %1"_s.arg(clock_.Now().toString(u"dd.MM.yyyy, HH:mm"_s))));
    state_->SetText(u"Der Bericht liegt in der Zwischenablage."_s);
}

void frmVorpruefung::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::StyleChange && again_ != nullptr) // the parts take their style after this
        QMetaObject::invokeMethod(this, &frmVorpruefung::Restyle, Qt::QueuedConnection);
}

void frmVorpruefung::Restyle() {
    ApplyLook();
    shown_.clear(); // their rows are made anew in the new size
    ShowState();
}

void frmVorpruefung::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    layout()->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    layout()->setSpacing(units.Gap(3));
    for (QGridLayout* head : findChildren<QGridLayout*>())
        head->setHorizontalSpacing(units.Gap(3));
    verdict_->setFont(units.Font(1.8, true));
    bar_->setFixedWidth(units.Of(10));
    findings_->header()->resizeSection(Way, units.Of(1.8));
    for (QPushButton* button : {copy_, close_, cancel_, static_cast<QPushButton*>(again_)})
        button->setMinimumWidth(units.Of(7.2));
    setMinimumSize(units.Of(42), units.Of(24));
    const QSize room = screen()->availableGeometry().size() - QSize(units.Gap(4), units.Of(3));
    resize(QSize(units.Of(62), units.Of(40)).boundedTo(room));
    ShareWidth();
}

void frmVorpruefung::ShareWidth() {
    findings_->header()->resizeSection(Where, std::min(SkinStyle::Units().Of(19), width() * 3 / 10));
}

void frmVorpruefung::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    ShareWidth();
}

} // namespace kalvo
