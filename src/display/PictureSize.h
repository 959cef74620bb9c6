#pragma once

namespace tavex2 {

// The sides of a picture of a trial, in pixels.

inline constexpr int smallestPictureWidth = 200;
inline constexpr int smallestPictureHeight = 150;
inline constexpr int largestPictureSide = 10000;

} // namespace tavex2
