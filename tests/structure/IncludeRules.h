#pragma once

#include <set>
#include <string>
#include <vector>

namespace kalvo::test {

/** A source file of the program; the path is relative to src, e.g. "archive/ui/ArchiveGrid.cpp". */
struct SourceFile {
    std::string path;
    std::string text;
};

/**
 * What the order of the folders forbids: includes that go upwards or into another window's folder, widgets in logic,
 * foreign libraries outside the one folder that wraps them; and files that have outgrown their size.
 */
class IncludeRules {
public:
    /** widgetHeaders: names of the headers that belong to Qt's widgets, e.g. "QLabel". */
    explicit IncludeRules(std::set<std::string> widgetHeaders) : widgetHeaders_(std::move(widgetHeaders)) {}

    /** One line per violation; empty when the file keeps all rules. */
    std::vector<std::string> Violations(const SourceFile& file) const;

private:
    std::string OwnInclude(const SourceFile& file, const std::string& included) const;
    std::string ForeignInclude(const SourceFile& file, const std::string& included) const;

    std::set<std::string> widgetHeaders_;
};

} // namespace kalvo::test
