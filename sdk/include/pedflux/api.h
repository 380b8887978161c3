#pragma once

/// Marks what the SDK's library shows to its users; everything else in it stays hidden.
#define PEDFLUX_API __attribute__((visibility("default")))
