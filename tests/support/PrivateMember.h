#ifndef ZEPHYR_TESTS_SUPPORT_PRIVATEMEMBER_H
#define ZEPHYR_TESTS_SUPPORT_PRIVATEMEMBER_H

namespace zephyr::test {

/// Opens one private member to a test without a word in the class: access is not checked in an explicit
/// instantiation.
///
///     struct FontOf : PrivateMember<FontOf, std::shared_ptr<QFont> Console::*> {};
///     template struct Open<FontOf, &Console::mFont>;
///     (console.*memberPointer(FontOf())).reset();
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-template-friend" // which is what is meant
#endif
template <typename Tag, typename MemberPointer>
struct PrivateMember
{
    using Pointer = MemberPointer;
    friend Pointer memberPointer(Tag);
};
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif

template <typename Tag, typename Tag::Pointer Member>
struct Open
{
    friend typename Tag::Pointer memberPointer(Tag) { return Member; }
};

} // namespace zephyr::test

#endif
