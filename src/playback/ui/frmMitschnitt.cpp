#include "playback/ui/frmMitschnitt.h"

#include "base/FileName.h"
#include "base/Settings.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/LevelBar.h"
#include "widgets/Mnemonics.h"
#include "widgets/SkinStyle.h"
#include "widgets/TimeLabel.h"
#include "widgets/xMessageBox.h"

#include <QComboBox>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace kalvo {

namespace {

template<typename Widget>
Widget* Named(Widget* widget, const char* name, const QString& spoken) {
    widget->setObjectName(QLatin1String(name));
    widget->setAccessibleName(spoken);
    return widget;
}

QString SizeText(qint64 bytes) {
    return QLocale(QLocale::German).formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

/** Rounded down: what is promised shall be there. */
QString RoomText(qint64 seconds) {
    if (seconds < 3600)
        return QStringLiteral("%1 Minuten").arg(seconds / 60);
    return QStringLiteral("%1 Stunden").arg(seconds / 3600);
}

} // namespace

QString RecordingTime(double seconds) {
    const auto whole = static_cast<qint64>(seconds);
    const auto two = [](qint64 number) { return QString::number(number).rightJustified(2, u'0'); };
    return two(whole / 3600) + u':' + two(whole / 60 % 60) + u':' + two(whole % 60);
}

frmMitschnitt::frmMitschnitt(const RecordingOptions& options, const QDateTime& now, QWidget* parent)
    : QDialog(parent),
      options_(options),
      start_(new IconButton(QStringLiteral("record"), IconButton::Size::Big, this)),
      time_(new TimeLabel(QStringLiteral("00:00:00"), this)),
      statusText_(new ElidedLabel(this)),
      level_(new LevelBar(this)),
      format_(new QComboBox(this)),
      folder_(new ElidedLabel(this)),
      choose_(new QPushButton(tr("&Ändern..."), this)),
      name_(new QLineEdit(this)),
      ending_(new QLabel(this)),
      file_(new ElidedLabel(this)),
      size_(new ElidedLabel(this)),
      free_(new ElidedLabel(this)),
      titles_(new ElidedLabel(this)) {
    setObjectName(QStringLiteral("frmMitschnitt"));
    setWindowTitle(tr("Mitschnitt"));
    for (const RecordingFormat& format : RecordingFormats())
        format_->addItem(QString::fromUtf16(format.text), QLatin1String(format.key));
    format_->setCurrentIndex(format_->findData(options_.format));
    folder_->SetText(options_.folder);
    name_->setMaxLength(100);
    Build();
    SuggestName(now);
    ShowEnding();
    ShowState({});
    name_->setFocus(); // no key that comes by itself starts or ends a recording
    connect(start_, &QPushButton::clicked, this, &frmMitschnitt::StartOrStop);
    connect(choose_, &QPushButton::clicked, this, &frmMitschnitt::ChooseFolder);
    connect(format_, &QComboBox::activated, this, [this] {
        options_.format = format_->currentData().toString();
        ShowEnding();
        Q_EMIT OptionsChosen(options_);
    });
}

frmMitschnitt::~frmMitschnitt() = default;

void frmMitschnitt::Build() {
    const FontUnits& units = SkinStyle::Units();
    auto* open = Named(new QPushButton(tr("Ordner &öffnen"), this), "cmdOrdnerOeffnen", tr("Ordner öffnen"));
    auto* close = Named(new QPushButton(tr("&Schließen"), this), "cmdSchliessen", tr("Schließen"));
    for (QPushButton* button : {open, close, choose_, static_cast<QPushButton*>(start_)})
        button->setAutoDefault(false);
    connect(open, &QPushButton::clicked, this, &frmMitschnitt::OpenFolder);
    connect(close, &QPushButton::clicked, this, &frmMitschnitt::reject);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(units.Gap(2));
    buttons->addStretch(1);
    buttons->addWidget(open);
    buttons->addWidget(close);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    column->setSpacing(units.Gap(3));
    column->addLayout(BuildHead());
    column->addWidget(Named(level_, "Pegel", tr("Pegel")));
    column->addLayout(BuildRows());
    column->addStretch(1);
    column->addLayout(buttons);
    resize(units.Of(40), sizeHint().height());
}

QLayout* frmMitschnitt::BuildHead() {
    const FontUnits& units = SkinStyle::Units();
    Named(start_, "cmdAufnahme", tr("Aufnahme starten oder beenden"));
    start_->setMinimumWidth(units.Of(13));
    Named(time_, "lblZeit", tr("Aufgenommene Zeit"));
    time_->setFont(units.Font(2.6, true));
    Named(statusText_, "lblStand", tr("Stand der Aufnahme"));
    auto* row = new QHBoxLayout;
    row->setSpacing(units.Gap(4));
    row->addWidget(start_);
    row->addWidget(time_);
    row->addWidget(statusText_, 1);
    return row;
}

QLayout* frmMitschnitt::BuildRows() {
    const FontUnits& units = SkinStyle::Units();
    const auto row = [&units](QWidget* wide, QWidget* narrow) {
        auto* both = new QHBoxLayout;
        both->setSpacing(units.Gap(2));
        both->addWidget(wide, 1);
        both->addWidget(narrow);
        return both;
    };
    Named(format_, "cboFormat", tr("Format"));
    Named(folder_, "lblOrdner", tr("Ordner"));
    Named(choose_, "cmdOrdner", tr("Ordner ändern"));
    Named(name_, "txtName", tr("Dateiname"));
    auto* nameCaption = new QLabel(tr("&Name"), this);
    nameCaption->setBuddy(name_);
    auto* form = new QFormLayout;
    form->setHorizontalSpacing(units.Gap(4));
    form->setVerticalSpacing(units.Gap(2));
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    form->addRow(tr("&Format"), format_);
    form->addRow(tr("Ordner"), row(folder_, choose_));
    form->addRow(nameCaption, row(name_, ending_));
    form->addRow(tr("Datei"), Named(file_, "lblDatei", tr("Datei")));
    form->addRow(tr("Größe"), Named(size_, "lblGroesse", tr("Größe der Datei")));
    form->addRow(tr("Freier Platz"), Named(free_, "lblFrei", tr("Freier Platz")));
    form->addRow(tr("Cue-Sheet"), Named(titles_, "lblTitel", tr("Titel im Cue-Sheet")));
    return form;
}

void frmMitschnitt::SuggestName(const QDateTime& now) {
    const QString suggestion = DefaultRecordingName(now);
    if (suggestion == suggested_)
        return;
    if (name_->text() == suggested_)
        name_->setText(suggestion);
    suggested_ = suggestion;
}

void frmMitschnitt::ShowEnding() {
    ending_->setText(QLatin1String(RecordingFormatOf(options_.format).ending));
}

void frmMitschnitt::ChooseFolder() {
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Ordner für Mitschnitte"), options_.folder);
    if (folder.isEmpty())
        return;
    if (folder.size() > Settings::kLongestValue || FileName::HasControls(folder)) {
        xMessageBox::Ask(this, windowTitle(), FileName::Refusal(folder, Settings::kLongestValue), {tr("ok")},
                         xMessageBox::Sign::Warning);
        return;
    }
    options_.folder = folder;
    folder_->SetText(folder);
    Q_EMIT OptionsChosen(options_);
}

void frmMitschnitt::OpenFolder() {
    QDesktopServices::openUrl(QUrl::fromLocalFile(options_.folder));
}

void frmMitschnitt::StartOrStop() {
    if (status_ != RecordingStatus::Idle) {
        Q_EMIT StopRequested();
        return;
    }
    const QString name = CleanRecordingName(name_->text());
    Q_EMIT StartRequested({options_.folder, name.isEmpty() ? suggested_ : name, options_.format});
}

// ---- what runs

void frmMitschnitt::ShowState(const RecordingState& state) {
    const bool idle = state.status == RecordingStatus::Idle;
    status_ = state.status;
    start_->SetOn(!idle);
    start_->SetIconName(idle ? QStringLiteral("record") : QStringLiteral("stop"));
    ShowCaption(*start_, idle ? tr("Aufnahme starten") : tr("Aufnahme beenden"));
    for (QWidget* choice : std::initializer_list<QWidget*>{format_, choose_, name_})
        choice->setEnabled(idle);
    time_->SetText(RecordingTime(state.seconds));
    time_->SetTone(idle ? Tone::Dim : Tone::Text);
    ShowStatus(state);
    ShowFree(state);
    const bool begun = !state.path.isEmpty();
    file_->SetText(begun ? QFileInfo(state.path).fileName() : QStringLiteral("–"));
    size_->SetText(begun ? SizeText(state.bytes) : QStringLiteral("–"));
    titles_->SetText(begun ? tr("%1 Titel").arg(state.titles) : QStringLiteral("–"));
}

void frmMitschnitt::ShowStatus(const RecordingState& state) {
    const bool trouble = state.lost > 0 || state.status == RecordingStatus::Waiting;
    statusText_->SetTone(trouble ? Tone::Warning : Tone::Text);
    switch (state.status) {
    case RecordingStatus::Idle:
        return statusText_->SetText(state.path.isEmpty() ? tr("bereit") : tr("beendet"));
    case RecordingStatus::Starting:
        return statusText_->SetText(tr("beginnt..."));
    case RecordingStatus::Waiting:
        return statusText_->SetText(tr("wartet auf die Soundkarte"));
    case RecordingStatus::Running:
        statusText_->SetText(state.lost > 0 ? tr("läuft, Datenträger zu langsam") : tr("läuft"));
    }
}

void frmMitschnitt::ShowFree(const RecordingState& state) {
    if (state.free < 0)
        return free_->SetText(QStringLiteral("–"));
    const qint64 usable = std::max<qint64>(0, state.free - MasterRecorder::kLeastFree);
    const qint64 seconds = usable / RecordingFormatOf(options_.format).bytesPerSecond;
    const bool scarce = seconds < qint64{10} * 60;
    free_->SetTone(scarce ? Tone::Warning : Tone::Text);
    free_->SetText(tr("%1, reicht für %2").arg(SizeText(state.free), RoomText(seconds)));
}

void frmMitschnitt::ShowLevels(float left, float right) {
    level_->SetLevels(left, right);
}

} // namespace kalvo
