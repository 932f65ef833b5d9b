#pragma once

#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QString>

#include <memory>

namespace kalvo {

/** Whether the file is a module whose end has not been cut off; loading such a one would end the program. */
bool IsWholeModule(const QString& path);

/**
 * A module that is loaded from a folder at run time: one C function makes the one object of an abstract class. It must
 * outlive everything made by it. UI thread.
 */
template<class Library>
class ModuleFile {
public:
    /** folder: that of the executable. factory: name of the C function. */
    ModuleFile(const QString& folder, const QString& fileName, const char* factory)
        : path_(QDir(folder).filePath(fileName)), library_(path_), factory_(factory) {}

    /** Whether the file is there at all. */
    bool Exists() const { return QFileInfo(path_).isFile(); }

    /** Null when the file is missing, damaged or another module. */
    std::unique_ptr<Library> Create() {
        using Factory = Library* (*)();
        const auto create = IsWholeModule(path_) ? reinterpret_cast<Factory>(library_.resolve(factory_)) : nullptr;
        return std::unique_ptr<Library>(create != nullptr ? create() : nullptr);
    }

private:
    QString path_;
    QLibrary library_;
    const char* factory_;
};

/** "2.0": the low word, a dot, the high word of a module's version number. */
inline QString VersionText(quint32 version) {
    return QStringLiteral("%1.%2").arg(version & 0xFFFFU).arg(version >> 16U);
}

} // namespace kalvo
