#pragma once

#include "playback/Rehearsal.h"

#include <QAbstractTableModel>
#include <QDateTime>

#include <functional>

namespace kalvo {

/** The joints of a rehearsal as rows: when, which titles, how. What should be listened to is coloured. */
class JointModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { When, From, To, Fade, Level, Gap, Tempo, ColumnCount };
    /** Beats per minute of a title, 0 when unknown. */
    using TempoOf = std::function<double(const QString& path)>;

    /** The rehearsal outlives the model. */
    JointModel(const Rehearsal& rehearsal, TempoOf tempo, QObject* parent = nullptr);

    /** Joints count their time from now on. */
    void Reload(const QDateTime& now);
    /** The same joints, counted from now on. */
    void MoveTo(const QDateTime& now);
    /** What is known of a joint has changed; -1: of all. */
    void Renew(int row);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString Text(int row, int column) const;
    bool IsConspicuous(int row, int column) const;

    const Rehearsal& rehearsal_;
    TempoOf tempo_;
    QDateTime now_;
};

/** What is to be said about a joint, for the row's cells and for the line below the list. */
namespace JointText {

QString Fade(const Joint& joint);
/** "gleichmäßig", "+5 LU", "Loch 9 LU". */
QString Level(const audio::JointMeasures& measures);
QString Gap(const audio::JointMeasures& measures);
/** "128 → 124 (-4)"; one of both unknown: "128 → ?"; empty when both are. */
QString Tempo(double from, double to);

} // namespace JointText

} // namespace kalvo
