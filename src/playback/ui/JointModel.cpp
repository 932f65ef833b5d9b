#include "playback/ui/JointModel.h"

#include "widgets/PlainTip.h"
#include "widgets/SkinStyle.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr double kJump = 4;  ///< LU from which on a jump is told
constexpr double kDip = 8;   ///< LU
constexpr double kGap = 0.5; ///< s
constexpr double kTempo = 8; ///< beats per minute

QString Tenths(double value) {
    return QLocale(QLocale::German).toString(value, 'f', 1);
}

QString Signed(double value) {
    const long whole = std::lround(value);
    return whole < 0 ? u"−%1"_s.arg(-whole) : u"+%1"_s.arg(whole);
}

} // namespace

namespace JointText {

QString Fade(const Joint& joint) {
    switch (joint.kind) {
    case Joint::Kind::Fade:
        return u"%1 s"_s.arg(Tenths(joint.fade));
    case Joint::Kind::Jump:
        return u"Schnitt"_s;
    case Joint::Kind::Continue:
        break;
    }
    return u"gleicher Player"_s;
}

QString Level(const audio::JointMeasures& measures) {
    QStringList parts;
    if (measures.Dip() >= kDip)
        parts.append(u"Loch %1 LU"_s.arg(std::lround(measures.Dip())));
    if (std::abs(measures.Jump()) >= kJump)
        parts.append(Signed(measures.Jump()) + u" LU"_s);
    return parts.isEmpty() ? u"gleichmäßig"_s : parts.join(u", "_s);
}

QString Gap(const audio::JointMeasures& measures) {
    return measures.gap < kGap ? u"keine"_s : u"%1 s"_s.arg(Tenths(measures.gap));
}

QString Tempo(double from, double to) {
    if (from <= 0 && to <= 0)
        return {};
    const auto one = [](double tempo) { return tempo > 0 ? QString::number(std::lround(tempo)) : u"?"_s; };
    const QString both = one(from) + u" → "_s + one(to);
    return from > 0 && to > 0 ? u"%1 (%2)"_s.arg(both, Signed(std::round(to) - std::round(from))) : both;
}

} // namespace JointText

JointModel::JointModel(const Rehearsal& rehearsal, TempoOf tempo, QObject* parent)
    : QAbstractTableModel(parent), rehearsal_(rehearsal), tempo_(std::move(tempo)) {}

void JointModel::Reload(const QDateTime& now) {
    beginResetModel();
    now_ = now;
    endResetModel();
}

void JointModel::MoveTo(const QDateTime& now) {
    now_ = now;
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0, When), index(rowCount() - 1, When));
}

void JointModel::Renew(int row) {
    if (rowCount() == 0 || row >= rowCount())
        return;
    Q_EMIT dataChanged(index(std::max(0, row), 0), index(row < 0 ? rowCount() - 1 : row, ColumnCount - 1));
}

int JointModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rehearsal_.Joints().size());
}

int JointModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QString JointModel::Text(int row, int column) const {
    const Joint& joint = rehearsal_.Joints().at(row);
    const std::optional<RenderedJoint> known = rehearsal_.Known(row);
    switch (column) {
    case When:
        return now_.addMSecs(qRound64(joint.at * 1000)).toString(u"HH:mm:ss"_s);
    case From:
        return joint.NameOf(0);
    case To:
        return joint.NameOf(joint.titles.size() - 1);
    case Fade:
        return JointText::Fade(joint);
    case Level:
        return !known ? u"…"_s : known->length <= 0 ? u"nicht gerechnet"_s : JointText::Level(known->measures);
    case Gap:
        return !known ? u"…"_s : known->length <= 0 ? QString() : JointText::Gap(known->measures);
    case Tempo:
        return JointText::Tempo(tempo_(joint.titles.constFirst().path), tempo_(joint.titles.constLast().path));
    default:
        return {};
    }
}

bool JointModel::IsConspicuous(int row, int column) const {
    const Joint& joint = rehearsal_.Joints().at(row);
    const std::optional<RenderedJoint> known = rehearsal_.Known(row);
    if (column == Level && known)
        return known->length <= 0 || known->measures.Dip() >= kDip || std::abs(known->measures.Jump()) >= kJump;
    if (column == Gap && known)
        return known->measures.gap >= kGap;
    if (column != Tempo)
        return false;
    const double from = tempo_(joint.titles.constFirst().path);
    const double to = tempo_(joint.titles.constLast().path);
    return from > 0 && to > 0 && std::abs(from - to) >= kTempo;
}

QVariant JointModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::DisplayRole)
        return Text(index.row(), index.column());
    if (role == Qt::ToolTipRole)
        return PlainTip(Text(index.row(), index.column()));
    if (role == Qt::ForegroundRole && IsConspicuous(index.row(), index.column()))
        return SkinStyle::Colours().warning;
    if (role == Qt::FontRole && IsConspicuous(index.row(), index.column()))
        return SkinStyle::Units().Font(1, true);
    return {};
}

QVariant JointModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignVCenter | Qt::AlignLeft);
    if (orientation == Qt::Vertical || role != Qt::DisplayRole)
        return {};
    static const QStringList names{u"Uhrzeit"_s, u"Von"_s, u"Nach"_s, u"Blende"_s, u"Pegel"_s, u"Lücke"_s, u"BPM"_s};
    return names.value(section);
}

} // namespace kalvo
