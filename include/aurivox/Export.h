#pragma once

// AURIVOX_API marks what the module exports to its host.
#if defined(_WIN32)
#if defined(AURIVOX_BUILDING_MODULE)
#define AURIVOX_API __declspec(dllexport)
#elif defined(AURIVOX_STATIC)
#define AURIVOX_API
#else
#define AURIVOX_API __declspec(dllimport)
#endif
#else
#define AURIVOX_API __attribute__((visibility("default")))
#endif
