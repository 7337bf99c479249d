// Marks what the shared library offers to other programs; everything else stays hidden. MIRVANE_HIDDEN takes
// a nested class out of an offered one.
#ifndef MIRVANE_ASN1RT_EXPORT_H
#define MIRVANE_ASN1RT_EXPORT_H

#define MIRVANE_API __attribute__((visibility("default")))
#define MIRVANE_HIDDEN __attribute__((visibility("hidden")))

#endif
