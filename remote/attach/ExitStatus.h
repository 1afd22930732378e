#ifndef ZEPHYR_ATTACH_EXITSTATUS_H
#define ZEPHYR_ATTACH_EXITSTATUS_H

namespace zephyr::attach {

inline constexpr int kOk = 0;
inline constexpr int kLineFailed = 1; ///< A line failed or was unknown.
inline constexpr int kNoAnswer = 2;   ///< Nobody answers, or the command line, a file or the output is wrong.
inline constexpr int kInterrupted = 130; ///< Ctrl+C, as a shell has it.

} // namespace zephyr::attach

#endif
