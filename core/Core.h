// The core library qrncore: everything a user of the CIM object model includes.
#pragma once

#include "core/Status.h"
