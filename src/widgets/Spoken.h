#pragma once

#include <QAccessible>
#include <QString>

#include <optional>

class QWidget;

namespace kalvo {

/**
 * What a widget that paints itself tells a screen reader beside its accessible name. Standard widgets tell it
 * themselves. UI thread.
 */
class Spoken {
public:
    /** A value that can be read as a number, and set where it is not `fixed`. */
    struct Number {
        double value = 0;
        double least = 0;
        double most = 0;
        double step = 0;
        bool fixed = false;
    };

    virtual ~Spoken() = default;

    virtual QAccessible::Role SpokenRole() const = 0;
    /** What is shown at the moment, in words; empty: its name says it all. */
    virtual QString SpokenValue() const { return {}; }
    virtual std::optional<Number> SpokenNumber() const { return {}; }
    /** As the user sets it; within the number's range. */
    virtual void SetSpokenNumber(double /*value*/) {}

    /**
     * From then on screen readers are told of such widgets, of buttons that are switched on, of labels that have a name
     * beside their text and of what combo boxes are for. Needs the application; more than one call is as good as one.
     */
    static void Install();
    /** Says the name of a widget aloud, whatever has the focus: for what must not be missed. */
    static void Announce(QWidget& widget);
};

} // namespace kalvo
