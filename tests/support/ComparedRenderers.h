#ifndef ZEPHYR_TESTS_SUPPORT_COMPAREDRENDERERS_H
#define ZEPHYR_TESTS_SUPPORT_COMPAREDRENDERERS_H

#include "support/ConsoleView.h"
#include "support/PlainRenderer.h"

#include <functional>

namespace zephyr::test {

/// Sets a painter up as a host may before it draws the console.
using PainterSetUp = std::function<void(QPainter&)>;

/// The library's renderer and the plain one, which are given the same frames.
class ComparedRenderers
{
public:
    /// Whether both draw the same pixels over `canvas`, an image of any class.
    template <typename Canvas>
    testing::AssertionResult agreeOn(const ConsoleView& view, const Canvas& canvas,
                                     double elapsedSeconds = 0.0, const PainterSetUp& setUp = {})
    {
        Canvas actual = canvas;
        QPainter p(&actual);
        if (setUp) {
            setUp(p);
        }
        mRenderer.render(seconds(elapsedSeconds), view.snapshot(), p);
        p.end();

        Canvas expected = canvas;
        p.begin(&expected);
        if (setUp) {
            setUp(p);
        }
        mPlain.render(elapsedSeconds, view.snapshot(), p);
        p.end();
        return samePixels(actual, expected);
    }

private:
    console::ConsoleRenderer mRenderer;
    PlainRenderer mPlain;
};

/// Whether the first frames of both renderers agree.
template <typename Canvas>
testing::AssertionResult matchesPlain(const ConsoleView& view, const Canvas& canvas,
                                      const PainterSetUp& setUp = {})
{
    return ComparedRenderers().agreeOn(view, canvas, 0.0, setUp);
}

} // namespace zephyr::test

#endif
