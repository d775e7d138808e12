#pragma once

/// Marks what libifcore exports; everything else of the library is hidden.
#define IFCORE_API __attribute__((visibility("default")))
