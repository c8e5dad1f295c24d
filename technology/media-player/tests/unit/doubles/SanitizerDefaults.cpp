// How the thread sanitizer treats what it can't see into.

#if defined(__SANITIZE_THREAD__)
// The distribution's Qt, libdbus and glib are not instrumented, so their own locks are invisible and what
// they do under them looks like races. What our own code and Qt's headers do is watched all the same.
extern "C" const char* __tsan_default_options(); // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __tsan_default_options()  // NOLINT(bugprone-reserved-identifier)
{
    return "ignore_noninstrumented_modules=1";
}
#endif
