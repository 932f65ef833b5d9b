#pragma once

#include "archive/ui/ArchiveDesk.h"
#include "support/WindowActs.h"

#include <QLabel>

namespace kalvo::test {

/** An archive with a window over it, whose parts are found by their names. */
class ArchiveWindowTest : public ::testing::Test, protected ArchiveDesk {
protected:
    template<typename Widget>
    Widget& Find(const char* name) {
        auto* found = Window().findChild<Widget*>(QString::fromUtf8(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    QString Text(const char* label) { return Find<QLabel>(label).text(); }
    void Press(const char* button) { Find<QAbstractButton>(button).click(); }

private:
    virtual QWidget& Window() = 0;
};

} // namespace kalvo::test
