# Rules shared by the Makefiles of agent/, tests/native/ and bench/, which set `root` and include this.
#
#   O=DIR       where everything lands, .build/plain when not given
#   SANITIZE=1  with AddressSanitizer and UndefinedBehaviorSanitizer
MAKEFLAGS += --no-builtin-rules
O ?= $(root)/.build/plain
SANITIZE ?= 0
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
	-Wall -Wextra -Werror -Wshadow -Wformat=2 -Wnon-virtual-dtor
ifeq ($(SANITIZE),1)
sanitize_flags := -fsanitize=address,undefined -fno-sanitize-recover=undefined
flags += $(sanitize_flags) -fno-omit-frame-pointer -g -D_GLIBCXX_ASSERTIONS
endif
flags += $(call package_flags,libtirpc)

# $(call objects,PATTERN...): what the sources that match become.
objects = $(patsubst $(root)/%.cpp,$(O)/obj/%.o,$(sort $(wildcard $(addprefix $(root)/,$(1)))))
rpc_objects := $(call objects,rmon/rpc/*.cpp)

# Programs also depend on their folders, whose time tells that a source file came or went.
link = $(CXX) $(CXXFLAGS) $(sanitize_flags) $(LDFLAGS) -o $@ $(filter %.o,$^)

.PHONY: all
all:

$(O)/obj/%.o: $(root)/%.cpp $(root)/script/programs.mk $(firstword $(MAKEFILE_LIST))
	@mkdir -p $(@D)
	$(CXX) $(flags) $(CXXFLAGS) -c $< -o $@
