# SPDX-License-Identifier: MIT
# Rules shared by the Makefiles of agent/, tests/native/ and bench/, which set `root` and include this.
#
#   O=DIR       where everything lands, .build/plain when not given
#   SANITIZE=1  with AddressSanitizer and UndefinedBehaviorSanitizer
#   DEVELOPER=1 compiler warnings are errors: newer compilers and libraries have new ones, which stop no user's build
MAKEFLAGS += --no-builtin-rules
O ?= $(root)/.build/plain
SANITIZE ?= 0
DEVELOPER ?= 0
PHP_CONFIG ?= php-config
ifeq ($(origin CXX),default)
CXX := g++
endif
CXXFLAGS ?= -O2 -g

# Include paths of others are the system's own: warnings are about this tree only.
package_flags = $(patsubst -I%,-isystem %,$(shell pkg-config --cflags $(1)))
package_libs = $(shell pkg-config --libs $(1))
php_flags = $(patsubst -I%,-isystem %,$(shell $(PHP_CONFIG) --includes))

flags := -std=c++20 -fPIC -fvisibility=hidden -I$(root) -MMD -MP \
	-Wall -Wextra -Wshadow -Wformat=2 -Wnon-virtual-dtor
ifeq ($(DEVELOPER),1)
flags += -Werror
endif

# Hardening, as Debian builds its own packages, as far as the compiler has it for this processor.
supported = $(shell printf 'int main() {}' | $(CXX) -Werror $(1) -x c++ -c -o /dev/null - 2>/dev/null && echo '$(1)')
hardening := $(foreach flag,-fstack-protector-strong -fstack-clash-protection -fcf-protection \
	-mbranch-protection=standard,$(call supported,$(flag))) -Werror=format-security
# It works on optimized code only, and the sanitizers look at the same calls.
ifneq ($(filter -O1 -O2 -O3 -Os,$(CXXFLAGS)),)
ifeq ($(SANITIZE)$(findstring _FORTIFY_SOURCE,$(CXXFLAGS)),0)
hardening += -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2
endif
endif
flags += $(hardening)
# The objects are position-independent; what is linked with -shared sets this to nothing.
pie := -pie
ifeq ($(SANITIZE),1)
sanitize_flags := -fsanitize=address,undefined -fno-sanitize-recover=undefined
flags += $(sanitize_flags) -fno-omit-frame-pointer -g -D_GLIBCXX_ASSERTIONS
endif
flags += $(call package_flags,libtirpc)

# $(call objects,PATTERN...): what the sources that match become.
objects = $(patsubst $(root)/%.cpp,$(O)/obj/%.o,$(sort $(wildcard $(addprefix $(root)/,$(1)))))
rpc_objects := $(call objects,rmon/rpc/*.cpp)

# The agent's objects, and its folders.
agent_objects := $(call objects,agent/*.cpp agent/*/*.cpp)
# What makes it a process of this machine, which tests that have it in them are not.
service_objects := $(filter $(O)/obj/agent/main.o $(O)/obj/agent/service/%,$(agent_objects))
agent_rooms := $(patsubst %/,%,$(sort $(dir $(wildcard $(root)/agent/*.cpp $(root)/agent/*/*.cpp))))

# Programs also depend on their folders, whose time tells that a source file came or went.
link = $(CXX) $(CXXFLAGS) $(sanitize_flags) $(pie) -Wl,-z,relro,-z,now $(LDFLAGS) -o $@ $(filter %.o,$^)

.PHONY: all
all:

$(O)/obj/%.o: $(root)/%.cpp $(root)/script/programs.mk $(firstword $(MAKEFILE_LIST))
	@mkdir -p $(@D)
	$(CXX) $(flags) $(CXXFLAGS) -c $< -o $@

# The names of all procedures, each with a comma, from the lines that declare them.
procedures := $(O)/procedures.inc
$(procedures): $(root)/rmon/rpc/rmonrpc_clnt.h $(root)/script/programs.mk
	@mkdir -p $(@D)
	tr '\n' ' ' <$< | grep -o 'inline constexpr procedure<[^;]*;' | sed 's/.* \([a-z0-9_]*\);/\1,/' >$@
	test $$(wc -l <$@) -eq $$(grep -c '^inline constexpr procedure<' $<)
