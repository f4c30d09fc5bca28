#ifndef VORTM_COMMON_ASSERT_H
#define VORTM_COMMON_ASSERT_H

// Assertions guard programmer errors and stay active in every build type,
// whatever NDEBUG says: a broken invariant must stop the process with the
// exact text of the failed condition.
namespace vortm {
namespace common {
[[noreturn]] void assertFailed(const char* expr, const char* file, int line, const char* func);
}  // namespace common
}  // namespace vortm

#define VOR_ASSERT(expr) \
  ((expr) ? (void)0 : ::vortm::common::assertFailed(#expr, __FILE__, __LINE__, __func__))

#endif
