#pragma once

#include <pedflux/vectors.h>

/// The arithmetic of vectors, which the SDK does not have: computed from its getters, component by component, by the
/// rules of floating point. Division by zero gives infinities and NaN; negation flips the sign of zero too.
namespace pedflux::jni {

template <class Operation>
Vec2d each_component(Vec2d const& a, Operation operation) {
    return {operation(a.GetX()), operation(a.GetZ())};
}
template <class Operation>
Vec3d each_component(Vec3d const& a, Operation operation) {
    return {operation(a.GetX()), operation(a.GetY()), operation(a.GetZ())};
}
template <class Operation>
Vec2d each_component(Vec2d const& a, Vec2d const& b, Operation operation) {
    return {operation(a.GetX(), b.GetX()), operation(a.GetZ(), b.GetZ())};
}
template <class Operation>
Vec3d each_component(Vec3d const& a, Vec3d const& b, Operation operation) {
    return {operation(a.GetX(), b.GetX()), operation(a.GetY(), b.GetY()), operation(a.GetZ(), b.GetZ())};
}

template <class Vector>
Vector plus(Vector const* a, Vector const& b) {
    return each_component(*a, b, [](double x, double y) { return x + y; });
}
template <class Vector>
Vector minus(Vector const* a, Vector const& b) {
    return each_component(*a, b, [](double x, double y) { return x - y; });
}
template <class Vector>
Vector times(Vector const* a, double factor) {
    return each_component(*a, [factor](double x) { return x * factor; });
}
template <class Vector>
Vector divide(Vector const* a, double divisor) {
    return each_component(*a, [divisor](double x) { return x / divisor; });
}
template <class Vector>
Vector negate(Vector const* a) {
    return each_component(*a, [](double x) { return -x; });
}

}  // namespace pedflux::jni
