dnl SPDX-License-Identifier: MIT
dnl Build rules of the rmon extension: phpize && ./configure && make && make install

PHP_ARG_ENABLE([rmon],
  [whether to enable rmon],
  [AS_HELP_STRING([--enable-rmon],
    [Enable the client of the monitoring agent])],
  [yes])

PHP_ARG_ENABLE([rmon-developer],
  [whether to treat compiler warnings as errors],
  [AS_HELP_STRING([--enable-rmon-developer],
    [rmon: compile with many warnings, all of them errors])],
  [no],
  [no])

PHP_ARG_ENABLE([rmon-sanitizers],
  [whether to build with AddressSanitizer and UndefinedBehaviorSanitizer],
  [AS_HELP_STRING([--enable-rmon-sanitizers],
    [rmon: compile with AddressSanitizer and UndefinedBehaviorSanitizer])],
  [no],
  [no])

PHP_ARG_WITH([rmon-test-root],
  [for a folder that stands for the appliance],
  [AS_HELP_STRING([--with-rmon-test-root=DIR],
    [rmon: look for the appliance's files and commands under DIR; for tests only])],
  [no],
  [no])

if test "$PHP_RMON" != "no"; then
  if test "$PHP_THREAD_SAFETY" = "yes"; then
    AC_MSG_ERROR([rmon works in a PHP without thread safety only; this PHP is thread-safe (ZTS)])
  fi

  AC_MSG_CHECKING([for PHP 8.1 or later])
  rmon_php_version=`$PHP_CONFIG --vernum`
  AS_IF([test "$rmon_php_version" -ge 80100],
    [AC_MSG_RESULT([yes])],
    [AC_MSG_ERROR([rmon needs PHP 8.1 or later, found `$PHP_CONFIG --version`])])

  AC_MSG_CHECKING([for a PHP of 64 bits])
  rmon_save_cppflags=$CPPFLAGS
  CPPFLAGS="$CPPFLAGS `$PHP_CONFIG --includes`"
  AC_COMPILE_IFELSE([AC_LANG_SOURCE([[
      #include <php.h>
      int of_64_bits[sizeof(zend_long) == 8 ? 1 : -1];
    ]])],
    [AC_MSG_RESULT([yes])],
    [AC_MSG_ERROR([rmon needs a PHP of 64 bits: unsigned counters of 32 bits would turn negative in this one])])
  CPPFLAGS=$rmon_save_cppflags

  PKG_CHECK_MODULES([LIBTIRPC], [libtirpc],,
    [AC_MSG_ERROR([rmon needs libtirpc, found through pkg-config (Debian: apt-get install libtirpc-dev pkg-config)])])
  PHP_EVAL_INCLINE([$LIBTIRPC_CFLAGS])
  PHP_EVAL_LIBLINE([$LIBTIRPC_LIBS], [RMON_SHARED_LIBADD])

  PHP_REQUIRE_CXX()
  AC_LANG_PUSH([C++])
  rmon_save_cxxflags=$CXXFLAGS
  CXXFLAGS="$CXXFLAGS -std=c++20"
  AC_MSG_CHECKING([whether $CXX compiles C++20])
  AC_COMPILE_IFELSE([AC_LANG_SOURCE([[
      #include <concepts>
      #include <span>
      #if __cplusplus < 202002L
      #error "older than C++20"
      #endif
      template <std::integral T> constexpr T twice(T value) { return value + value; }
      static_assert(twice(21) == 42);
    ]])],
    [AC_MSG_RESULT([yes])],
    [AC_MSG_ERROR([rmon needs a compiler for C++20 (g++ 10 or clang++ 12 and later); $CXX refused -std=c++20])])
  CXXFLAGS=$rmon_save_cxxflags
  AC_LANG_POP([C++])

  RMON_CXXFLAGS="-std=c++20 -fno-exceptions -fno-rtti -fvisibility=hidden -fvisibility-inlines-hidden"
  dnl A header that went away must not stop the next build.
  RMON_CXXFLAGS="$RMON_CXXFLAGS -MP"

  dnl Hardening, as Debian builds its own packages, as far as the compiler has it for this processor. The fortified
  dnl calls work in optimized code only, and the sanitizers look at the same ones.
  AC_LANG_PUSH([C++])
  for rmon_flag in -fstack-protector-strong -fstack-clash-protection -fcf-protection -mbranch-protection=standard; do
    AC_MSG_CHECKING([whether $CXX has $rmon_flag])
    rmon_save_cxxflags=$CXXFLAGS
    CXXFLAGS="$CXXFLAGS -Werror $rmon_flag"
    AC_COMPILE_IFELSE([AC_LANG_SOURCE([[int main() { return 0; }]])],
      [AC_MSG_RESULT([yes]); RMON_CXXFLAGS="$RMON_CXXFLAGS $rmon_flag"],
      [AC_MSG_RESULT([no])])
    CXXFLAGS=$rmon_save_cxxflags
  done
  AC_LANG_POP([C++])
  RMON_CXXFLAGS="$RMON_CXXFLAGS -Wformat -Werror=format-security"
  AS_IF([test "$PHP_RMON_SANITIZERS" = "no"],
    [AS_CASE([" $CXXFLAGS "],
      [*_FORTIFY_SOURCE*], [],
      [*" -O1 "*|*" -O2 "*|*" -O3 "*|*" -Os "*],
      [RMON_CXXFLAGS="$RMON_CXXFLAGS -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2"])])
  RMON_SHARED_LIBADD="$RMON_SHARED_LIBADD -Wl,-z,relro -Wl,-z,now"

  if test "$PHP_RMON_DEVELOPER" != "no"; then
    RMON_CXXFLAGS="$RMON_CXXFLAGS -Wall -Wextra -Werror -Wshadow -Wconversion -Wformat=2"
    RMON_CXXFLAGS="$RMON_CXXFLAGS -Wundef -Wmissing-declarations -Wnon-virtual-dtor -Wvla"
    dnl The engine's handlers have parameters that few use; clang++ counts signs among conversions.
    RMON_CXXFLAGS="$RMON_CXXFLAGS -Wno-unused-parameter -Wno-sign-conversion"
    dnl The headers of the engine and of the library are not ours to mend.
    INCLUDES=`echo "$INCLUDES" | $SED 's/-I/-isystem /g'`
  fi

  dnl Nothing to link: the runtime comes with the program that loads the module, preloaded if need be.
  if test "$PHP_RMON_SANITIZERS" != "no"; then
    RMON_CXXFLAGS="$RMON_CXXFLAGS -fsanitize=address,undefined -fno-sanitize-recover=undefined"
    RMON_CXXFLAGS="$RMON_CXXFLAGS -fno-omit-frame-pointer -g -D_GLIBCXX_ASSERTIONS"
  fi

  AS_CASE([$PHP_RMON_TEST_ROOT],
    [no], [],
    [/*], [AC_DEFINE_UNQUOTED([RMON_TEST_ROOT], ["$PHP_RMON_TEST_ROOT"], [in front of the appliance's paths])],
    [AC_MSG_ERROR([--with-rmon-test-root needs an absolute path])])

  dnl Every source file of the module, in an order that no locale changes.
  rmon_sources=`cd "$abs_srcdir" && LC_ALL=C && export LC_ALL && \
    for rmon_file in rmon/*.cpp rmon/rpc/*.cpp rmon/groups/*/*.cpp; do \
      test -f "$rmon_file" && echo "$rmon_file"; \
    done | tr '\n' ' '`
  test -n "$rmon_sources" || AC_MSG_ERROR([no source files under $abs_srcdir/rmon])

  PHP_SUBST([RMON_SHARED_LIBADD])
  PHP_NEW_EXTENSION([rmon], [$rmon_sources], [$ext_shared],, [-I@ext_srcdir@ $RMON_CXXFLAGS], [cxx])
  for rmon_dir in `for rmon_file in $rmon_sources; do dirname "$rmon_file"; done | sort -u`; do
    PHP_ADD_BUILD_DIR([$ext_builddir/$rmon_dir])
  done
  PHP_ADD_MAKEFILE_FRAGMENT
fi
