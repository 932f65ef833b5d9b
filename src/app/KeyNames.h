#pragma once

#include <QTranslator>

namespace kalvo {

/** German names of keys in menus and tooltips where Qt's own texts keep the English one or differ from the keyboard's.
 */
class KeyNames : public QTranslator {
    Q_OBJECT

public:
    using QTranslator::QTranslator;

    QString translate(const char* context, const char* source, const char* disambiguation, int number) const override;
    bool isEmpty() const override { return false; }
};

} // namespace kalvo
