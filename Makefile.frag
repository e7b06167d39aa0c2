# SPDX-License-Identifier: MIT
# The generated header is committed; script/arginfo renews it. Without this rule the engine's own
# pattern rule would try to generate it during a build, and download a parser for that.
rmon/rmon_arginfo.h $(top_srcdir)/rmon/rmon_arginfo.h: ;

# Some tests wait for the module's own time-outs, longer than the engine's runner allows when not told otherwise.
test: export TEST_TIMEOUT ?= 900
