#ifndef ZEPHYR_ATTACH_LISTING_H
#define ZEPHYR_ATTACH_LISTING_H

#include "client/RunningPrograms.h"

#include <QByteArray>

#include <vector>

namespace zephyr::attach {

/// The programs as text, one a line with its process's number behind the name, in columns.
QByteArray listing(const std::vector<console::remote::RunningProgram>& programs);

/// The programs as JSON, an object a line: `{"answers":true,"name":"sandbox","pid":4711}`.
QByteArray jsonListing(const std::vector<console::remote::RunningProgram>& programs);

} // namespace zephyr::attach

#endif
