// Every test program is a host: COM runs in its main thread from the start.

#include "platform/com/com.h"

namespace {

struct Apartment {
    Apartment() { CoInitialize(nullptr); }
} const g_apartment;

}  // namespace
