// What the rehearsal's window looks like.

#include "playback/ui/frmProbelaufControls.h"
#include "widgets/Named.h"
#include "widgets/SkinStyle.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QScreen>
#include <QVBoxLayout>

#include <initializer_list>
#include <utility>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kMostMargin = 30; // s

IconButton* RehearsalButton(const char* icon, QWidget* parent) {
    return new IconButton(QString::fromLatin1(icon), IconButton::Size::Big, parent);
}

} // namespace

frmProbelauf::Controls::Controls(frmProbelauf* window)
    : state(new QLabel(window)),
      bar(new QProgressBar(window)),
      table(new QTableView(window)),
      titles(new ElidedLabel(window)),
      facts(new ElidedLabel(window)),
      position(new PositionSlider(2, window)),
      previous(RehearsalButton("previous", window)),
      play(RehearsalButton("play", window)),
      next(RehearsalButton("next", window)),
      all(RehearsalButton("automatic", window)),
      before(new QSpinBox(window)),
      after(new QSpinBox(window)),
      volume(new VolumeSlider(window)),
      message(new ElidedLabel(window)),
      cancel(new QPushButton(u"Abbrechen"_s, window)),
      close(new QPushButton(u"Schließen"_s, window)) {}

void frmProbelauf::NameControls() {
    const auto button = [](IconButton* part, const QString& name, const QString& caption, const QString& hint) {
        Named(part, name, caption);
        part->setText(caption);
        part->setToolTip(hint);
        part->setAutoDefault(false);
    };
    button(controls_->previous, u"cmdVorheriger"_s, u"Vorheriger"_s, u"Den Übergang davor anhören"_s);
    button(controls_->play, u"cmdAnhoeren"_s, u"Anhören"_s, u"Diesen Übergang anhören (Leertaste)"_s);
    button(controls_->next, u"cmdNaechster"_s, u"Nächster"_s, u"Den Übergang danach anhören"_s);
    button(controls_->all, u"cmdAlle"_s, u"Alle anhören"_s, u"Von hier an einen Übergang nach dem anderen anhören"_s);
    Named(controls_->state, u"lblStand"_s, u"Stand des Probelaufs"_s);
    Named(controls_->bar, u"ProgressBar1"_s, u"Fortschritt"_s);
    Named(controls_->table, u"Uebergaenge"_s, u"Übergänge"_s);
    Named(controls_->titles, u"lblUebergang"_s, u"Gewählter Übergang"_s);
    Named(controls_->facts, u"lblEinzelheiten"_s, u"Einzelheiten des Übergangs"_s);
    Named(controls_->position, u"Slider1"_s, u"Position im Übergang"_s);
    Named(controls_->before, u"spnVorlauf"_s, u"Sekunden vor dem Übergang"_s);
    Named(controls_->after, u"spnNachlauf"_s, u"Sekunden nach dem Übergang"_s);
    Named(controls_->volume, u"HScroll1"_s, u"Lautstärke des Kopfhörers"_s);
    Named(controls_->message, u"lblMeldung"_s, u"Meldung"_s);
    Named(controls_->cancel, u"cmdAbbrechen"_s, u"Rechnen abbrechen oder fortsetzen"_s);
    Named(controls_->close, u"cmdSchliessen"_s, controls_->close->text());
    controls_->volume->setToolTip(u"Lautstärke des Kopfhörers"_s);
    for (QSpinBox* margin : {controls_->before, controls_->after}) {
        margin->setRange(1, kMostMargin);
        margin->setSuffix(u" s"_s);
        margin->setValue(JointMargins().before);
        margin->setKeyboardTracking(false);
    }
    for (QPushButton* plain : {controls_->cancel, controls_->close})
        plain->setAutoDefault(false);
    controls_->bar->setTextVisible(false);
    controls_->message->SetTone(Tone::Warning);
    controls_->message->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    controls_->message->hide();
    controls_->facts->SetTone(Tone::Dim);
}

/** In the window itself: a widget of its own would cut the buttons' focus rings. */
QLayout* frmProbelauf::BuildTransport() {
    auto* row = new QHBoxLayout;
    for (IconButton* button : {controls_->previous, controls_->play, controls_->next, controls_->all})
        row->addWidget(button, 1);
    return row;
}

void frmProbelauf::Arrange() {
    QTableView* table = controls_->table;
    table->setModel(&model_);
    table->setSelectionBehavior(QTableView::SelectRows);
    table->setSelectionMode(QTableView::SingleSelection);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setAlternatingRowColors(true);
    table->setTabKeyNavigation(false);
    table->setCornerButtonEnabled(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setMinimumSectionSize(0);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setSectionResizeMode(JointModel::From, QHeaderView::Stretch);
    table->horizontalHeader()->setSectionResizeMode(JointModel::To, QHeaderView::Stretch);
    auto* head = new QHBoxLayout;
    head->addWidget(controls_->state, 1);
    head->addWidget(controls_->bar);
    head->addWidget(controls_->cancel);
    auto* foot = new QHBoxLayout;
    auto* before = new QLabel(u"&Vorlauf"_s, this);
    auto* after = new QLabel(u"&Nachlauf"_s, this);
    auto* volume = new QLabel(u"&Lautstärke"_s, this);
    before->setBuddy(controls_->before);
    after->setBuddy(controls_->after);
    volume->setBuddy(controls_->volume);
    for (QWidget* part :
         std::initializer_list<QWidget*>{before, controls_->before, after, controls_->after, volume, controls_->volume})
        foot->addWidget(part);
    foot->addStretch(1);
    foot->addWidget(controls_->close);
    auto* column = new QVBoxLayout(this);
    column->addLayout(head);
    column->addWidget(table, 1);
    auto* line = new QHBoxLayout;
    line->addWidget(controls_->facts, 1);
    line->addWidget(controls_->message, 1);
    column->addWidget(controls_->titles);
    column->addLayout(line);
    column->addWidget(controls_->position);
    column->addLayout(BuildTransport());
    column->addLayout(foot);
}

void frmProbelauf::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    layout()->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    layout()->setSpacing(units.Gap(2));
    for (QHBoxLayout* row : findChildren<QHBoxLayout*>())
        row->setSpacing(units.Gap(2));
    controls_->state->setFont(units.Font(1.3, true));
    controls_->titles->setFont(units.Font(1.3, true));
    controls_->bar->setFixedWidth(units.Of(12));
    controls_->volume->setFixedWidth(units.Of(9));
    for (QPushButton* button : {controls_->cancel, controls_->close})
        button->setMinimumWidth(units.Of(7.2));
    QTableView* table = controls_->table;
    table->verticalHeader()->setDefaultSectionSize(units.TableRow());
    table->horizontalHeader()->setFixedHeight(units.ColumnHead());
    const std::pair<int, double> widths[] = {{JointModel::When, 5.6},
                                             {JointModel::Fade, 5.4},
                                             {JointModel::Level, 7.5},
                                             {JointModel::Gap, 4.5},
                                             {JointModel::Tempo, 10}};
    for (const auto& [column, width] : widths)
        table->setColumnWidth(column, units.Of(width));
    setMinimumSize(units.Of(48), units.Of(26));
    const QSize room = screen()->availableGeometry().size() - QSize(units.Gap(4), units.Of(3));
    resize(QSize(units.Of(68), units.Of(44)).boundedTo(room));
    Fold();
}

/** What the line below the list says anyway gives way to the titles; low windows keep their rows. */
void frmProbelauf::Fold() {
    const FontUnits& units = SkinStyle::Units();
    const bool narrow = width() < units.Of(58);
    const bool low = height() < units.Of(38);
    controls_->table->setColumnHidden(JointModel::Gap, narrow);
    controls_->table->setColumnHidden(JointModel::Tempo, narrow);
    controls_->position->setFixedHeight(units.Of(low ? 2.6 : 3.6));
    controls_->position->SetLow(low);
    for (IconButton* button : {controls_->previous, controls_->play, controls_->next, controls_->all})
        button->SetLow(low);
}

} // namespace kalvo
