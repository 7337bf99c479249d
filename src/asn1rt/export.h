// Marks what the shared library offers to other programs; everything else stays hidden.
#ifndef MIRVANE_ASN1RT_EXPORT_H
#define MIRVANE_ASN1RT_EXPORT_H

#define MIRVANE_API __attribute__((visibility("default")))

#endif
