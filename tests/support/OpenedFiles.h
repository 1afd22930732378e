#ifndef ZEPHYR_TESTS_SUPPORT_OPENEDFILES_H
#define ZEPHYR_TESTS_SUPPORT_OPENEDFILES_H

#include <QDesktopServices>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>
#include <string>
#include <vector>

namespace zephyr::test {

/// Stands in for the desktop's default applications while it lives, and records the files that they are asked to
/// open. A test program that uses it must list this header among its sources and switch AUTOMOC on.
class OpenedFiles : public QObject
{
    Q_OBJECT

public:
    OpenedFiles() { QDesktopServices::setUrlHandler("file", this, "open"); }
    ~OpenedFiles() override { QDesktopServices::unsetUrlHandler("file"); }

    /// The local paths, in the order in which they were opened.
    const std::vector<std::string>& paths() const { return mPaths; }

    /// Called with the path of each file when it is opened.
    std::function<void(const std::string& path)> onOpen;

public Q_SLOTS:
    void open(const QUrl& url)
    {
        mPaths.push_back(url.toLocalFile().toStdString());
        if (onOpen) {
            onOpen(mPaths.back());
        }
    }

private:
    std::vector<std::string> mPaths;
};

} // namespace zephyr::test

#endif
