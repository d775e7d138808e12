#pragma once

/// Marks what the bundled host library exports; everything else in it is hidden.
#define IFHOST_API __attribute__((visibility("default")))
