#include "live/ui/GuestPanel.h"

#include "base/Settings.h"
#include "live/GuestNetwork.h"
#include "live/GuestServer.h"
#include "live/ui/frmGaesteCode.h"
#include "widgets/ButtonPainting.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Named.h"
#include "widgets/SkinStyle.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kNetworkInterval = 3000; // ms
constexpr int kLowestPort = 1024;
constexpr int kHighestPort = 65535;

const QString kSection = u"Gaeste"_s;
const QString kOn = u"An"_s;
const QString kPort = u"Anschluss"_s;
const QString kNetwork = u"Netz"_s;

int PortIn(const Settings& settings) {
    const int port = settings.GetNumber(kSection, kPort, GuestServer::kDefaultPort);
    return port >= kLowestPort && port <= kHighestPort ? port : GuestServer::kDefaultPort;
}

} // namespace

GuestPanel::GuestPanel(GuestServer& server, Settings& settings, QWidget* parent)
    : RingRoom(parent),
      server_(server),
      settings_(settings),
      switch_(Named(new QCheckBox(u"Wünsche von &Telefonen annehmen"_s, this), u"chkGaeste"_s,
                    u"Wünsche von Telefonen annehmen"_s)),
      port_(Named(new QSpinBox(this), u"txtGaestePort"_s, u"Anschluss der Gästeseite"_s)),
      network_(Named(new QComboBox(this), u"cboGaesteNetz"_s, u"Adresse der Gästeseite"_s)),
      code_(Named(new QPushButton(u"&QR-Code zeigen"_s, this), u"cmdGaesteCode"_s, u"QR-Code zeigen"_s)),
      state_(Named(new ElidedLabel(this), u"lblGaeste"_s, u"Stand der Gästeseite"_s)) {
    setObjectName(u"GuestPanel"_s);
    port_->setRange(kLowestPort, kHighestPort);
    port_->setValue(PortIn(settings));
    Build();
    connect(switch_, &QCheckBox::clicked, this, &GuestPanel::Switch);
    connect(port_, &QSpinBox::valueChanged, this, [this](int port) { settings_.PutNumber(kSection, kPort, port); });
    connect(network_, &QComboBox::activated, this, [this] {
        settings_.PutSetting(kSection, kNetwork, network_->currentText());
        ShowState();
    });
    connect(code_, &QPushButton::clicked, this, &GuestPanel::ShowCode);
    connect(&server_, &GuestServer::Switched, this, &GuestPanel::ShowState);
    networks_.setInterval(kNetworkInterval);
    connect(&networks_, &QTimer::timeout, this, &GuestPanel::ShowAddresses);
    networks_.start();
    ShowAddresses();
    ShowState();
}

void GuestPanel::Build() {
    const FontUnits& units = SkinStyle::Units();
    network_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    network_->setMinimumWidth(units.Of(9));
    port_->setToolTip(u"Unter dieser Nummer erreichen die Telefone die Seite."_s);
    network_->setToolTip(u"Unter dieser Adresse erreichen die Telefone diesen Rechner."_s);
    code_->setAutoDefault(false);
    const auto label = [this](const QString& text, QWidget* buddy) {
        auto* made = new QLabel(text, this);
        made->setBuddy(buddy);
        return made;
    };
    auto* row = new QHBoxLayout;
    row->setSpacing(units.Gap(2));
    row->addWidget(label(u"Adress&e"_s, network_));
    row->addWidget(network_);
    row->addWidget(label(u"A&nschluss"_s, port_));
    row->addWidget(port_);
    row->addStretch();
    row->addWidget(code_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(focusRingMargin, focusRingMargin, focusRingMargin, focusRingMargin);
    column->setSpacing(units.Gap(2));
    column->addWidget(switch_);
    column->addWidget(state_);
    column->addLayout(row);
}

void GuestPanel::Restore(GuestServer& server, const Settings& settings) {
    if (settings.GetSwitch(kSection, kOn, false))
        server.Start(PortIn(settings));
}

void GuestPanel::Switch(bool on) {
    if (on)
        server_.Start(port_->value());
    else
        server_.Stop();
    settings_.PutSwitch(kSection, kOn, server_.IsOn());
    ShowState();
}

void GuestPanel::ShowAddresses() {
    QStringList addresses;
    const QList<GuestNetwork::Address> found = GuestNetwork::Addresses();
    for (const GuestNetwork::Address& one : found)
        addresses.append(one.address);
    QStringList shown;
    for (int i = 0; i < network_->count(); ++i)
        shown.append(network_->itemText(i));
    if (addresses == shown)
        return;
    const QString wanted = settings_.GetSetting(kSection, kNetwork, network_->currentText());
    network_->clear();
    network_->addItems(addresses);
    if (!addresses.isEmpty())
        network_->setCurrentIndex(std::max(0, static_cast<int>(addresses.indexOf(wanted))));
    ShowState();
}

QString GuestPanel::Address() const {
    return network_->count() == 0 ? QString() : u"http://%1:%2/"_s.arg(network_->currentText()).arg(server_.Port());
}

void GuestPanel::ShowState() {
    const bool on = server_.IsOn();
    const QString address = on ? Address() : QString();
    switch_->setChecked(on);
    port_->setEnabled(!on);
    network_->setEnabled(network_->count() > 1);
    code_->setEnabled(!address.isEmpty());
    const bool trouble = !server_.Failure().isEmpty() || (on && address.isEmpty());
    state_->SetTone(trouble ? Tone::Warning : Tone::Dim);
    if (!server_.Failure().isEmpty())
        state_->SetText(server_.Failure());
    else if (!on)
        state_->SetText(u"Aus. Eingeschaltet suchen und wünschen die Gäste mit dem Telefon im selben WLAN."_s);
    else if (address.isEmpty())
        state_->SetText(u"An, aber dieser Rechner ist in keinem Netz, in dem Telefone ihn erreichen."_s);
    else
        state_->SetText(u"An: "_s + address);
    if (codeWindow_ && address.isEmpty())
        codeWindow_->close();
    else if (codeWindow_)
        codeWindow_->SetAddress(address);
}

void GuestPanel::ShowCode() {
    if (!codeWindow_) {
        codeWindow_ = new frmGaesteCode(this);
        codeWindow_->setAttribute(Qt::WA_DeleteOnClose);
    }
    codeWindow_->SetAddress(Address());
    codeWindow_->ShowLarge();
}

} // namespace kalvo
