// Headers that every test reaches and that never change.
#include "precompiled.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
