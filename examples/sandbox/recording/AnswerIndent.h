#ifndef ZEPHYR_SANDBOX_RECORDING_ANSWERINDENT_H
#define ZEPHYR_SANDBOX_RECORDING_ANSWERINDENT_H

namespace zephyr::sandbox {

/// Indent of every answer of the sandbox's commands, in spaces.
constexpr unsigned kAnswerIndent = 4;

} // namespace zephyr::sandbox

#endif
