// Marks what a platform library offers; everything else of it stays hidden.
#ifndef MIRVANE_PLATFORM_EXPORT_H
#define MIRVANE_PLATFORM_EXPORT_H

#define MIRVANE_PLATFORM_API __attribute__((visibility("default")))

#endif
