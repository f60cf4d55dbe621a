// Points, sizes, rectangles and affine transforms, in points (not pixels); y grows downwards. Plain
// values.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarni::platform {

struct CGPoint {
  double x = 0;
  double y = 0;
  bool operator==(const CGPoint&) const = default;
};

// No point: no rectangle contains it, and no rectangle round it contains a point.
inline constexpr CGPoint kNowhere{std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::quiet_NaN()};

struct CGSize {
  double width = 0;
  double height = 0;
  bool operator==(const CGSize&) const = default;
};

struct CGRect {
  CGPoint origin;
  CGSize size;
  bool operator==(const CGRect&) const = default;

  double minX() const { return origin.x; }
  double minY() const { return origin.y; }
  double maxX() const { return origin.x + size.width; }
  double maxY() const { return origin.y + size.height; }
  double midX() const { return origin.x + size.width / 2; }
  double midY() const { return origin.y + size.height / 2; }
  // Left and top edges belong to the rectangle, right and bottom ones do not.
  bool contains(CGPoint p) const {
    return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY();
  }
  bool contains(const CGRect& other) const {
    return other.minX() >= minX() && other.maxX() <= maxX() && other.minY() >= minY() &&
           other.maxY() <= maxY();
  }
};

// The common part of two rectangles. Rectangles that share nothing, not even an edge, give the null
// rectangle: origin at infinity, size zero.
inline CGRect CGRectIntersection(const CGRect& a, const CGRect& b) {
  const double left = std::max(a.minX(), b.minX());
  const double top = std::max(a.minY(), b.minY());
  const double right = std::min(a.maxX(), b.maxX());
  const double bottom = std::min(a.maxY(), b.maxY());
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  if (right < left || bottom < top) return {{kInfinity, kInfinity}, {0, 0}};
  return {{left, top}, {right - left, bottom - top}};
}

// x' = a x + c y + tx, y' = b x + d y + ty
struct CGAffineTransform {
  double a = 1, b = 0, c = 0, d = 1, tx = 0, ty = 0;
  bool operator==(const CGAffineTransform&) const = default;

  CGPoint apply(CGPoint p) const { return {a * p.x + c * p.y + tx, b * p.x + d * p.y + ty}; }
  bool isIdentity() const { return *this == CGAffineTransform{}; }
  static CGAffineTransform translation(double x, double y) { return {1, 0, 0, 1, x, y}; }
  static CGAffineTransform scale(double x, double y) { return {x, 0, 0, y, 0, 0}; }
  static CGAffineTransform rotation(double radians) {
    return {std::cos(radians), std::sin(radians), -std::sin(radians), std::cos(radians), 0, 0};
  }
  // First this, then `next`.
  CGAffineTransform then(const CGAffineTransform& next) const {
    return {next.a * a + next.c * b,
            next.b * a + next.d * b,
            next.a * c + next.c * d,
            next.b * c + next.d * d,
            next.a * tx + next.c * ty + next.tx,
            next.b * tx + next.d * ty + next.ty};
  }
  // A transform without inverse (scale 0) is returned as it is.
  CGAffineTransform inverted() const {
    const double determinant = a * d - b * c;
    if (determinant == 0) return *this;
    return {d / determinant,
            -b / determinant,
            -c / determinant,
            a / determinant,
            (c * ty - d * tx) / determinant,
            (b * tx - a * ty) / determinant};
  }
};

// The smallest upright rectangle round the transformed corners of `rect`.
CGRect CGRectApplyAffineTransform(const CGRect& rect, const CGAffineTransform& transform);

}  // namespace tarni::platform
