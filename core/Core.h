// The core library qrncore: everything a user of the CIM object model includes.
#pragma once

#include "core/DateTime.h"
#include "core/Interfaces.h"
#include "core/MemoryNamespace.h"
#include "core/Services.h"
#include "core/Status.h"
#include "core/Value.h"
