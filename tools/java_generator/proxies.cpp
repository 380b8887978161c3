#include "tools/java_generator/proxies.h"

#include "tools/java_generator/module_class.h"
#include "tools/java_generator/text.h"

#include <algorithm>

namespace pedflux::java {

namespace {

using manifest::Kind;
using manifest::Role;
using manifest::Type;

/// A type at the proxies' surface.
std::string surface_type(Type const& type) {
    if (type.kind == Kind::enumeration) return type.name;
    if (type.kind == Kind::text && !type.list) return "String";
    return manifest::native_spelling(type);
}

/// What is passed to the native method for an argument.
std::string converted_argument(Type const& type, std::string const& name) {
    if (type.list) {
        if (type.kind == Kind::text) return fill("Arguments.texts($1, \"$1\")", {name});
        if (type.kind == Kind::object) return fill("$2.checked($1, \"$1\")", {name, type.name});
        return fill("Arguments.notNull($1, \"$1\")", {name});
    }
    switch (type.kind) {
        case Kind::character:
            return fill("Arguments.singleByte($1, \"$1\")", {name});
        case Kind::natural:
            return fill("Arguments.natural($1, \"$1\")", {name});
        case Kind::enumeration:
            return fill("Arguments.notNull($1, \"$1\").value()", {name});
        case Kind::text:
            return fill("Arguments.utf8($1, \"$1\")", {name});
        case Kind::object:
            return fill("$2.handleOf($1), $1", {name, type.name});
        default:
            return name;
    }
}

std::string converted_result(Type const& type, std::string const& call) {
    if (type.kind == Kind::nothing) return call;
    std::string result = call;
    if (!type.list) {
        if (type.kind == Kind::enumeration) result = fill("$1.fromValue($2)", {type.name, call});
        if (type.kind == Kind::text) result = fill("Arguments.text($1)", {call});
        if (type.kind == Kind::object) result = fill("$1.wrap($2)", {type.name, call});
    }
    return "return " + result;
}

std::string parameters(Method const& method) {
    std::vector<std::string> declared;
    for (std::size_t index = 0; index < method.exported->parameters.size(); ++index) {
        declared.push_back(surface_type(method.exported->parameters[index]) + " " + method.parameter_name(index));
    }
    return joined(declared, ", ");
}

std::string native_call(Method const& method) {
    std::vector<std::string> passed;
    if (method.exported->has_object()) passed.emplace_back("handleOf(this), this");
    for (std::size_t index = 0; index < method.exported->parameters.size(); ++index) {
        passed.push_back(converted_argument(method.exported->parameters[index], method.parameter_name(index)));
    }
    return fill("pedfluxJNI.$1($2)", {method.exported->name, joined(passed, ", ")});
}

/// Writes one proxy.
class Proxy {
  public:
    Proxy(Class const& of, Surface const& surface, Names const& names) : class_(of), surface_(surface), names_(names) {}

    std::string source() const {
        std::string const comment = javadoc(class_.comment(), names_, Documented::type_or_constant);
        return fill(
            R"(package com.kelvar.pedflux;

$1public class $2 extends $3$4 {
$5
    private long swigCPtr;

$6$7$8$9}
)",
            {comment, class_.name, base(), is_ordered() ? fill(" implements Comparable<$1>", {class_.name}) : "",
             constants(), constructors(), methods(), object_methods(), handles()});
    }

  private:
    std::string base() const { return class_.base.empty() ? "NativeObject" : class_.base; }

    bool is_ordered() const { return class_.find("internalCompare", 1) != nullptr; }

    bool has_constants() const {
        return std::any_of(class_.methods.begin(), class_.methods.end(),
                           [](Method const& method) { return method.exported->role == Role::constant; });
    }

    std::string constants() const {
        std::string source;
        for (auto const& method : class_.methods) {
            if (method.exported->role != Role::constant) continue;
            source += fill("$1public static final $2 $3 = constant(pedfluxJNI.$4());\n",
                           {javadoc(constant_comment(method.exported->operation), names_, Documented::type_or_constant),
                            class_.name, method.exported->operation, method.exported->name});
        }
        return indented(source);
    }

    std::string constant_comment(std::string const& constant) const {
        if (!class_.declared) return "";
        auto const found = class_.declared->constants.find(constant);
        return found == class_.declared->constants.end() ? "" : found->second;
    }

    /// The constructor that the native library calls, the one of derived classes and of single results, and the SDK's.
    std::string constructors() const {
        std::string source;
        if (class_.base.empty()) {
            source = fill(R"(/**
 * The proxy of the object behind a handle, for programs that call the native methods themselves.
 *
 * @param owned whether deleting the proxy, or forgetting it, releases the handle
 */
public $1(long handle, boolean owned) {
    swigCPtr = handle;
    if (owned && handle != 0) own(handle, ReleaseTable.$2);
}

)",
                          {class_.name, release_row(class_.name)});
            if (class_.has_derived) source += fill("$1(Derived derived) {}\n\n", {class_.name});
        } else {
            source = fill(R"(/**
 * The proxy of the object behind a handle, for programs that call the native methods themselves.
 *
 * @param owned whether deleting the proxy, or forgetting it, releases the handle
 */
public $1(long handle, boolean owned) {
    this(Derived.OBJECT);
    swigCPtr = handle;
    if (handle == 0) return;
    if (owned) own(handle, ReleaseTable.$2);
    $3.handleOf(this);  // the native library reads the handles of all levels
}

$1(Derived derived) {
    super(derived);
}

)",
                          {class_.name, release_row(class_.name), surface_.root(class_).name});
        }
        for (auto const& method : class_.methods) {
            if (method.exported->role != Role::constructor) continue;
            source += fill("$1public $2($3) {\n    this($4, true);\n}\n\n",
                           {comment(method), class_.name, parameters(method), native_call(method)});
        }
        return indented(source);
    }

    std::string comment(Method const& method) const { return javadoc(method.comment(), names_, Documented::operation); }

    std::string methods() const {
        std::string source;
        for (auto const& method : class_.methods) {
            bool const is_static = method.exported->role == Role::static_method;
            if (!is_static && !method.exported->has_object()) continue;
            source += comment(method) + (is_close(method) ? closing(method) : calling(method, is_static)) + "\n";
        }
        return indented(source);
    }

    std::string calling(Method const& method, bool is_static) const {
        return fill("public $1$2 {\n$3    $4;\n}\n", {is_static ? "static " : "", java_signature(method),
                                                      changes(method) ? "    requireChangeable();\n" : "",
                                                      converted_result(method.exported->result, native_call(method))});
    }

    /// Constants are the SDK's own objects, shared by all; whatever could change one is refused.
    bool changes(Method const& method) const {
        return has_constants() && method.exported->role == Role::method && !method.exported->constant &&
               method.exported->result.kind == Kind::nothing;
    }

    /// What the SDK calls Close and Java's close() are one: the operation, and then the release.
    static bool is_close(Method const& method) {
        return method.exported->method_name() == "close" && method.exported->parameters.empty();
    }

    static std::string closing(Method const& method) {
        return fill(R"(@Override
public void close() {
    if (swigCPtr == 0) return;
    try {
        $1;
    } finally {
        delete();
    }
}
)",
                    {native_call(method)});
    }

    /// equals, hashCode, compareTo and toString, where the SDK has what they need.
    std::string object_methods() const {
        std::string source;
        if (class_.find("internalEquals", 1)) {
            source += fill(R"(@Override
public boolean equals(Object other) {
    return this == other || (other instanceof $1 that && internalEquals(that));
}

)",
                           {class_.name});
        }
        if (class_.find("internalHashCode", 0)) {
            source += "@Override\npublic int hashCode() {\n    return internalHashCode();\n}\n\n";
        }
        if (is_ordered()) {
            source += fill(
                "@Override\npublic int compareTo($1 other) {\n"
                "    return internalCompare(Arguments.notNull(other, \"other\"));\n}\n\n",
                {class_.name});
        }
        if (std::string const text = text_form(); !text.empty()) {
            source += fill(
                "@Override\npublic String toString() {\n"
                "    return swigCPtr == 0 ? \"$1 (deleted)\" : $2;\n}\n\n",
                {class_.name, text});
        }
        return indented(source);
    }

    /// The SDK's own text, or else for a value the constructor call that makes it: "Vec3d(1.0, 2.0, 3.0)".
    std::string text_form() const {
        if (class_.find("getString", 0)) return "getString()";
        std::string longest;
        std::size_t count = 0;
        for (auto const& method : class_.methods) {
            if (method.exported->role != Role::constructor || !class_.by_value) continue;
            std::vector<std::string> getters;
            std::size_t const size = method.exported->parameters.size();
            for (std::size_t index = 0; index < size; ++index) {
                std::string name = method.parameter_name(index);
                name.front() = static_cast<char>(name.front() - ('a' <= name.front() && name.front() <= 'z' ? 32 : 0));
                if (class_.find("get" + name, 0)) getters.push_back("get" + name + "()");
            }
            if (getters.size() != size || size <= count) continue;
            count = size;
            longest = fill("\"$1(\" + $2 + \")\"", {class_.name, joined(getters, " + \", \" + ")});
        }
        return longest;
    }

    /// How the handle is reached: 0 for null, an exception when it was released.
    std::string handles() const {
        std::string source = class_.has_derived ? fill(R"(static long handleOf($1 object) {
    if (object == null) return 0;
    long handle = object.swigCPtr;
    return handle != 0 ? handle : object.obtainHandleOf$1();
}

/** A derived object has no handle of this class until it is asked for it. */
private synchronized long obtainHandleOf$1() {
    if (swigCPtr == 0) swigCPtr = ownBase(upcastTo$1(), ReleaseTable.$2);
    return swigCPtr;
}

long upcastTo$1() {
    throw deleted();
}
)",
                                                       {class_.name, release_row(class_.name)})
                                                : fill(R"(static long handleOf($1 object) {
    if (object == null) return 0;
    long handle = object.swigCPtr;
    if (handle == 0) throw object.deleted();
    return handle;
}
)",
                                                       {class_.name});
        source += wrapping();
        if (!class_.base.empty()) {
            source += fill(R"(
@Override
long upcastTo$1() {
    return pedfluxJNI.$2_SWIGSmartPtrUpcast(handleOf(this));
}
)",
                           {class_.base, class_.name});
        }
        if (class_.in_lists) {
            source += fill(R"(
/** None of the list's objects may be deleted; whether one may be null is for the native library to say. */
static $1[] checked($1[] objects, String name) {
    for ($1 object : Arguments.notNull(objects, name)) handleOf(object);
    return objects;
}
)",
                           {class_.name});
        }
        source += fill(R"(
@Override
void release(long handle) {
    pedfluxJNI.delete_$1(handle);
}

@Override
void forget() {
    swigCPtr = 0;
$2}
)",
                       {class_.name, class_.base.empty() ? "" : "    super.forget();\n"});
        return indented(source);
    }

    /// The proxies of single results, and those of constants.
    std::string wrapping() const {
        if (!class_.base.empty()) {
            return fill(R"(
static $1 wrap(long handle) {
    if (handle == 0) return null;
    $1 object = new $1(Derived.OBJECT);
    object.swigCPtr = handle;
    object.own(handle, ReleaseTable.$2);
    return object;
}
)",
                        {class_.name, release_row(class_.name)});
        }
        std::string source = fill(R"(
static $1 wrap(long handle) {
    return handle == 0 ? null : new $1(handle, true);
}
)",
                                  {class_.name});
        if (has_constants()) {
            source += fill(R"(
private static $1 constant(long handle) {
    $1 object = new $1(handle, false);
    object.makeConstant();
    return object;
}
)",
                           {class_.name});
        }
        return source;
    }

    Class const& class_;
    Surface const& surface_;
    Names const& names_;
};

}  // namespace

std::string java_signature(Method const& method) {
    std::string const name = method.exported->method_name();
    if (method.exported->role == Role::constructor) return fill("$1($2)", {name, parameters(method)});
    return fill("$1 $2($3)", {surface_type(method.exported->result), name, parameters(method)});
}

std::string proxy(Class const& of, Surface const& surface, Names const& names) {
    return Proxy(of, surface, names).source();
}

std::string enumeration(std::string const& name, Enumeration const& declared, Names const& names) {
    std::string constants;
    for (auto const& constant : declared.constants) {
        constants += fill("$1$2($3),\n", {javadoc(constant.comment, names, Documented::type_or_constant), constant.name,
                                          std::to_string(constant.value)});
    }
    return fill(R"(package com.kelvar.pedflux;

$1public enum $2 {
$3    ;

    private static final $2[] CONSTANTS = values();

    private final int value;

    $2(int value) {
        this.value = value;
    }

    /** The number that stands for this constant in the SDK. */
    public int value() {
        return value;
    }

    /**
     * The constant that a number stands for.
     *
     * @throws IllegalArgumentException when there is none, as with an SDK that is newer than this class
     */
    public static $2 fromValue(int value) {
        for ($2 constant : CONSTANTS) {
            if (constant.value == value) return constant;
        }
        throw new IllegalArgumentException("$2 has no constant of the value " + value);
    }
}
)",
                {javadoc(declared.comment, names, Documented::type_or_constant), name, indented(constants)});
}

}  // namespace pedflux::java
