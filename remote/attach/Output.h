#ifndef ZEPHYR_ATTACH_OUTPUT_H
#define ZEPHYR_ATTACH_OUTPUT_H

#include "protocol/Entry.h"
#include "terminal/EntryPrinter.h"

#include <QByteArray>
#include <QString>

#include <cstdio>

namespace zephyr::attach {

/// Writes bytes to standard output, at once. \return false if that failed, which is complained of unless nobody reads any more.
bool write(const QByteArray& bytes);

/// Prints entries of a log to standard output: as a user reads them, or as a JSON object a line.
class Output
{
public:
    explicit Output(bool isJson) : mIsJson(isJson) {}

    /// Prints an entry. \return as write().
    bool print(const console::remote::Entry& entry) const;

    /// What print() would print, without the line feed at its end.
    QString text(const console::remote::Entry& entry) const;

    /// Whether entries are printed as JSON.
    bool isJson() const { return mIsJson; }

private:
    console::remote::EntryPrinter mPrinter{stdout};
    bool mIsJson;
};

} // namespace zephyr::attach

#endif
