// Precompiled for the core tests.
#include "wq_core_pch.h"

#include <gtest/gtest.h>
