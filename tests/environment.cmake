# SPDX-License-Identifier: Apache-2.0
# What all tests run with, also those that are scripts: none remembers its builds in the user's home,
# and none prints progress, which depends on the time that a job takes.
set(ENV{OXA_REMEMBER} 0)
set(ENV{OXA_PROGRESS} 0)
set(ENV{XDG_DATA_HOME} ${CMAKE_CURRENT_LIST_DIR}/none)
