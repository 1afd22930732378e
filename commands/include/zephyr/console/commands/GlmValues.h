#ifndef ZEPHYR_CONSOLE_COMMANDS_GLMVALUES_H
#define ZEPHYR_CONSOLE_COMMANDS_GLMVALUES_H

#include "zephyr/console/commands/Value.h"

#include <glm/vec2.hpp>
#include <glm/vec3.hpp>
#include <glm/vec4.hpp>

namespace zephyr::console::commands {

namespace detail {

/// The parts of `text` between commas, if there are `count` of them.
ZEPHYR_CONSOLE_COMMANDS_EXPORT std::vector<std::u32string> parts(const std::u32string& text,
                                                                 std::size_t count, char32_t separator);

} // namespace detail

/// Vectors of GLM, as their components with commas between them: `1,-2.5,3`.
template <glm::length_t Length, typename T, glm::qualifier Q>
struct Value<glm::vec<Length, T, Q>>
{
    /// \cond SPECIALISATIONS The members are as Value says.
    using Vector = glm::vec<Length, T, Q>;

    static constexpr std::u32string_view kName = U"vector";
    static constexpr std::u32string_view kExample = std::u32string_view(U"1,2,3,4").substr(0, 2 * Length - 1);

    static std::optional<Vector> read(const std::u32string& text)
    {
        const std::vector<std::u32string> parts = detail::parts(text, Length, U',');
        Vector vector{};
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const std::optional<T> component = Value<T>::read(parts[i]);
            if (!component) {
                return std::nullopt;
            }
            vector[static_cast<glm::length_t>(i)] = *component;
        }
        return parts.empty() ? std::nullopt : std::optional<Vector>(vector);
    }

    static std::u32string write(const Vector& vector)
    {
        std::u32string text = Value<T>::write(vector[0]);
        for (glm::length_t i = 1; i < Length; ++i) {
            text += U',' + Value<T>::write(vector[i]);
        }
        return text;
    }
    /// \endcond
};

} // namespace zephyr::console::commands

#endif
