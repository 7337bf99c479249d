// Stands where the library's source tree has a header of its own, which must not get in the way of this one,
// nor this one in the way of that.
inline constexpr char ownBlobHeader[] = "the program's own";
