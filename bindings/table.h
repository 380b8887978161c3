#pragma once

/// The words of the binding tables: one line per export, the native signature deduced from the SDK's operation.
///
///     CLASS(Floor, WalkableObject)                     delete_Floor, and the upcast to its direct base if it has one
///     CONSTRUCTOR(Axis3d, Vec3d const&, Vec3d const&)  new_Axis3d
///     CONSTRUCTOR_OVERLOAD(Vec2d, 1, double, double)   new_Vec2d__SWIG_1
///     COPY_CONSTRUCTOR(AgeTest, 2)                     new_AgeTest__SWIG_2
///     METHOD(Tri3d, rotatedAbout, RotatedAbout)        Tri3d_rotatedAbout; static operations too
///     METHOD_CONST(GraphQuery, setTimeRange, SetTimeRange)
///                                                      the same; its by-value parameters are declared const
///     OVERLOAD(BoundingBox3d, hull, 0, Hull, Vec3d const&)
///                                                      BoundingBox3d_hull__SWIG_0, the Hull with these parameters
///     GET(Floor, TypeId)                               Floor_getTypeId; likewise SET, HAS, IS, CLEAR, ADD, CREATE
///     PROPERTY(Vec3d, X)                               GET and SET
///     OPTIONAL(Server, Capacity)                       HAS, GET, SET and CLEAR
///     FLAG(ConnectionObject, Gated)                    IS and SET
///     CONSTANT(Color, DARK, BLUE)                      Color_DARK_BLUE_get; the name's words one by one
///     EXTENSION(Vec3d, plus, plus, Vec3d const&)       an operation that the bridge itself computes
///
/// A table file includes the SDK's headers and this one, and stands in namespace pedflux::jni. Compiled with
/// PEDFLUX_MANIFEST, the same lines describe the exports instead of making them.

#ifdef PEDFLUX_MANIFEST
#include "tools/manifest/register.h"
#else
#include "runtime/export.h"
#endif

#include "bindings/value_classes.h"
#include "runtime/wrappers.h"

#define CLASS(Class, ...) \
    DESTRUCTOR(Class)     \
    __VA_OPT__(UPCAST(Class, __VA_ARGS__))
#define DESTRUCTOR(Class) PEDFLUX_EXPORT(delete_1##Class, "", Destructor<Class>)
#define UPCAST(Class, Base) PEDFLUX_EXPORT(Class##_1SWIGSmartPtrUpcast, "", Upcast<Class, Base>)

#define CONSTRUCTOR(Class, ...) PEDFLUX_EXPORT(new_1##Class, #Class, Constructor<Class __VA_OPT__(, ) __VA_ARGS__>)
#define CONSTRUCTOR_OVERLOAD(Class, number, ...) \
    PEDFLUX_EXPORT(new_1##Class##_1_1SWIG_1##number, #Class, Constructor<Class __VA_OPT__(, ) __VA_ARGS__>)
#define COPY_CONSTRUCTOR(Class, number) CONSTRUCTOR_OVERLOAD(Class, number, Class const&)

#define METHOD(Class, java, Operation) PEDFLUX_EXPORT(Class##_1##java, #Operation, Method<Class, &Class::Operation>)
#define METHOD_CONST(Class, java, Operation) \
    PEDFLUX_EXPORT(Class##_1##java, #Operation, Method<Class, &Class::Operation, DeclaredConst>)
#define OVERLOAD(Class, java, number, Operation, ...)               \
    PEDFLUX_EXPORT(Class##_1##java##_1_1SWIG_1##number, #Operation, \
                   Method<Class, overload<__VA_ARGS__>(&Class::Operation)>)

#define GET(Class, Name) METHOD(Class, get##Name, Get##Name)
#define SET(Class, Name) METHOD(Class, set##Name, Set##Name)
#define HAS(Class, Name) METHOD(Class, has##Name, Has##Name)
#define IS(Class, Name) METHOD(Class, is##Name, Is##Name)
#define CLEAR(Class, Name) METHOD(Class, clear##Name, Clear##Name)
#define ADD(Class, Name) METHOD(Class, add##Name, Add##Name)
#define CREATE(Class, Name) METHOD(Class, create##Name, Create##Name)
#define PROPERTY(Class, Name) \
    GET(Class, Name)          \
    SET(Class, Name)
#define OPTIONAL(Class, Name) \
    HAS(Class, Name)          \
    PROPERTY(Class, Name)     \
    CLEAR(Class, Name)
#define FLAG(Class, Name) \
    IS(Class, Name)       \
    SET(Class, Name)

// A preprocessor cannot escape the underscore of a two-word name, so the words come one by one.
#define CONSTANT(Class, ...) CONSTANT_CHOICE(__VA_ARGS__, CONSTANT_OF_TWO, CONSTANT_OF_ONE, )(Class, __VA_ARGS__)
#define CONSTANT_CHOICE(first, second, choice, ...) choice
#define CONSTANT_OF_ONE(Class, word) PEDFLUX_EXPORT(Class##_1##word##_1get, #word, Constant<Class, &Class::word>)
#define CONSTANT_OF_TWO(Class, first, second) \
    PEDFLUX_EXPORT(Class##_1##first##_1##second##_1get, #first "_" #second, Constant<Class, &Class::first##_##second>)

#define EXTENSION(Class, java, function, ...) \
    PEDFLUX_EXPORT(Class##_1##java, "", Extension<Class, &function<Class> __VA_OPT__(, ) __VA_ARGS__>)
