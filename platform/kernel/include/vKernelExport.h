// SPDX-License-Identifier: Apache-2.0
// Marks what the PeltoKernel shared library exports.
//
// PELTO_KERNEL_API        a class or function of the library's interface
// PELTO_BUILDING_KERNEL   defined while the library itself is compiled
// PELTO_STATIC            defined for a static build, by the build and by its users
#ifndef V_KERNEL_EXPORT_H
#define V_KERNEL_EXPORT_H

#if defined(PELTO_STATIC)
#define PELTO_KERNEL_API
#elif defined(_WIN32)
#if defined(PELTO_BUILDING_KERNEL)
#define PELTO_KERNEL_API __declspec(dllexport)
#else
#define PELTO_KERNEL_API __declspec(dllimport)
#endif
#else
#define PELTO_KERNEL_API __attribute__((visibility("default")))
#endif

#endif
