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

/// While it lives, it stands in for the desktop's default applications and notes the files that are opened in
/// them. A test program that uses it lists this header among its sources and has AUTOMOC on.
class OpenedFiles : public QObject
{
    Q_OBJECT

public:
    OpenedFiles() { QDesktopServices::setUrlHandler("file", this, "open"); }
    ~OpenedFiles() override { QDesktopServices::unsetUrlHandler("file"); }

    /// The local paths, in the order in which they were opened.
    const std::vector<std::string>& paths() const { return mPaths; }

    /// Called with each path, at the moment at which its file is opened.
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
