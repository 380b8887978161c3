#include "tests/runtime/recording_env.h"

#include "runtime/names.h"
#include "tests/runtime/counted_heap.h"
#include "tests/runtime/trace.h"

#include <algorithm>
#include <cstdarg>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

namespace pedflux::jni::test {
namespace {

#define X(name) +1
constexpr std::size_t named_functions = 0
#include "jni_functions.h"
    ;
#undef X
constexpr std::size_t reserved_functions = 4;
static_assert(sizeof(JNINativeInterface_) == (reserved_functions + named_functions) * sizeof(void*));

template <class Reference>
Reference as(Object* object) {
    return reinterpret_cast<Reference>(object);
}

Object* of(jobject reference) { return reinterpret_cast<Object*>(reference); }

std::size_t length_of(Object const& array) {
    return array.bytes.size() + array.ints.size() + array.doubles.size() + array.elements.size();
}

/// "byte[3]", "Label" for a proxy, the path of a class, the text of a string.
std::string name_of(jobject reference) {
    if (!reference) return "null";
    Object const& object = *of(reference);
    if (object.type == "Class") return object.text;
    if (object.type == "String") return joined('"', object.text, '"');
    if (object.type.ends_with("[]"))
        return joined(object.type.substr(0, object.type.size() - 1), length_of(object), ']');
    return object.type;
}

/// A function's line in the trace: its name and the arguments that matter.
template <class... Arguments>
void called(char const* function, Arguments const&... arguments) {
    std::string line = joined(function, '(');
    [[maybe_unused]] char const* separator = "";
    ((line += joined(std::exchange(separator, ", "), arguments)), ...);
    add_to_trace(line + ')');
}

RecordingEnv& recording(JNIEnv* env) { return static_cast<RecordingEnv&>(*env); }

std::string class_of_proxy(std::string const& path) { return path.substr(path.rfind('/') + 1); }

char const* release_mode(jint mode) {
    return mode == JNI_ABORT ? "JNI_ABORT" : mode == JNI_COMMIT ? "JNI_COMMIT" : "0";
}

template <detail::Literal name>
void not_modelled() {
    throw std::logic_error(joined("the bridge called the JNI function ", name.view()));
}

/// The functions of arrays of one primitive.
template <class Element, class Array, std::vector<Element> Object::*values, detail::Literal type>
struct PrimitiveArray {
    static std::string function(char const* before, char const* after) { return joined(before, type.view(), after); }

    static Array create(JNIEnv* env, jsize size) {
        CountingScope const off(false);
        called(function("New", "Array").c_str(), size);
        std::string lower(type.view());
        lower.front() = static_cast<char>(lower.front() + ('a' - 'A'));
        auto* const array = recording(env).make({lower + "[]", ""});
        (array->*values).resize(static_cast<std::size_t>(size));
        return as<Array>(array);
    }
    static Element* elements(JNIEnv* env, Array array, jboolean* is_copy) {
        CountingScope const off(false);
        called(function("Get", "ArrayElements").c_str(), name_of(array), is_copy ? "is_copy" : "NULL");
        if (!array) return nullptr;
        auto const& given = of(array)->*values;
        auto* const copy = new Element[given.size()];
        std::ranges::copy(given, copy);
        recording(env).given_out[copy] = of(array);
        return copy;
    }
    static void release(JNIEnv* env, Array array, Element* elements, jint mode) {
        CountingScope const off(false);
        called(function("Release", "ArrayElements").c_str(), name_of(array), release_mode(mode));
        if (!array && !elements) return;
        auto const given = recording(env).given_out.find(elements);
        ASSERT_TRUE(given != recording(env).given_out.end() && given->second == of(array))
            << "released elements that were not given out for this array";
        recording(env).given_out.erase(given);
        delete[] elements;
    }
    static void fill(JNIEnv*, Array array, jsize start, jsize count, Element const* from) {
        CountingScope const off(false);
        called(function("Set", "ArrayRegion").c_str(), name_of(array), start, count);
        auto& target = of(array)->*values;
        ASSERT_LE(static_cast<std::size_t>(start + count), target.size());
        std::copy_n(from, count, target.begin() + start);
    }
};
using ByteArray = PrimitiveArray<jbyte, jbyteArray, &Object::bytes, "Byte">;
using IntArray = PrimitiveArray<jint, jintArray, &Object::ints, "Int">;
using DoubleArray = PrimitiveArray<jdouble, jdoubleArray, &Object::doubles, "Double">;

jclass find_class(JNIEnv* env, char const* path) {
    CountingScope const off(false);
    called("FindClass", path);
    if (recording(env).missing_classes.contains(path)) return nullptr;
    return as<jclass>(recording(env).make({"Class", path}));
}

jint throw_new(JNIEnv* env, jclass type, char const* message) {
    CountingScope const off(false);
    called("ThrowNew", name_of(type), message);
    if (type) recording(env).pending = joined(of(type)->text, ": ", message);
    return type ? JNI_OK : JNI_ERR;
}

void exception_clear(JNIEnv* env) {
    CountingScope const off(false);
    called("ExceptionClear");
    recording(env).pending.clear();
}

/// Identifiers of members are the strings that tell them apart.
template <class Identifier>
Identifier find_member(char const* function, RecordingEnv& env, jclass type, char const* name, char const* signature) {
    called(function, name_of(type), name, signature);
    return reinterpret_cast<Identifier>(env.make({"Member", joined(name_of(type), '.', name, signature)}));
}

jmethodID get_method_id(JNIEnv* env, jclass type, char const* name, char const* signature) {
    CountingScope const off(false);
    return find_member<jmethodID>("GetMethodID", recording(env), type, name, signature);
}

jfieldID get_field_id(JNIEnv* env, jclass type, char const* name, char const* signature) {
    CountingScope const off(false);
    return find_member<jfieldID>("GetFieldID", recording(env), type, name, signature);
}

jlong get_long_field(JNIEnv*, jobject proxy, jfieldID field) {
    CountingScope const off(false);
    called("GetLongField", name_of(proxy), reinterpret_cast<Object*>(field)->text);
    return of(proxy)->handle;
}

jobject new_object(JNIEnv* env, jclass type, jmethodID constructor, std::va_list arguments) {
    CountingScope const off(false);
    auto const handle = va_arg(arguments, jlong);
    auto const owned = va_arg(arguments, int);
    called("NewObject", name_of(type), reinterpret_cast<Object*>(constructor)->text, handle ? "handle" : "0",
           owned == JNI_TRUE ? "true" : "false");
    auto* const proxy = recording(env).make({class_of_proxy(of(type)->text), ""});
    proxy->handle = handle;
    return as<jobject>(proxy);
}

jsize get_array_length(JNIEnv*, jarray array) {
    CountingScope const off(false);
    called("GetArrayLength", name_of(array));
    return array ? static_cast<jsize>(length_of(*of(array))) : 0;
}

jobjectArray new_object_array(JNIEnv* env, jsize size, jclass type, jobject initial) {
    CountingScope const off(false);
    called("NewObjectArray", size, name_of(type), name_of(initial));
    auto* const array = recording(env).make({class_of_proxy(of(type)->text) + "[]", ""});
    array->elements.assign(static_cast<std::size_t>(size), of(initial));
    return as<jobjectArray>(array);
}

jobject get_object_array_element(JNIEnv*, jobjectArray array, jsize index) {
    CountingScope const off(false);
    called("GetObjectArrayElement", name_of(array), index);
    return as<jobject>(of(array)->elements.at(static_cast<std::size_t>(index)));
}

void set_object_array_element(JNIEnv*, jobjectArray array, jsize index, jobject element) {
    CountingScope const off(false);
    called("SetObjectArrayElement", name_of(array), index, name_of(element));
    of(array)->elements.at(static_cast<std::size_t>(index)) = of(element);
}

jstring new_string_utf(JNIEnv* env, char const* characters) {
    CountingScope const off(false);
    called("NewStringUTF", characters);
    return as<jstring>(recording(env).make({"String", characters}));
}

char const* get_string_utf_chars(JNIEnv* env, jstring string, jboolean* is_copy) {
    CountingScope const off(false);
    called("GetStringUTFChars", name_of(string), is_copy ? "is_copy" : "NULL");
    auto const& text = of(string)->text;
    auto* const copy = new char[text.size() + 1]{};
    std::ranges::copy(text, copy);
    recording(env).given_out[copy] = of(string);
    return copy;
}

void release_string_utf_chars(JNIEnv* env, jstring string, char const* characters) {
    CountingScope const off(false);
    called("ReleaseStringUTFChars", name_of(string));
    auto const given = recording(env).given_out.find(const_cast<char*>(characters));
    ASSERT_TRUE(given != recording(env).given_out.end() && given->second == of(string))
        << "released characters that were not given out for this string";
    recording(env).given_out.erase(given);
    delete[] characters;
}

}  // namespace

RecordingEnv::RecordingEnv() {
#define X(name) table_.name = reinterpret_cast<decltype(table_.name)>(&not_modelled<#name>);
#include "jni_functions.h"
#undef X
    table_.FindClass = find_class;
    table_.ThrowNew = throw_new;
    table_.ExceptionClear = exception_clear;
    table_.GetMethodID = get_method_id;
    table_.GetFieldID = get_field_id;
    table_.GetLongField = get_long_field;
    table_.NewObjectV = new_object;  // what NewObject calls in C++
    table_.GetArrayLength = get_array_length;
    table_.NewObjectArray = new_object_array;
    table_.GetObjectArrayElement = get_object_array_element;
    table_.SetObjectArrayElement = set_object_array_element;
    table_.NewStringUTF = new_string_utf;
    table_.GetStringUTFChars = get_string_utf_chars;
    table_.ReleaseStringUTFChars = release_string_utf_chars;
    table_.GetByteArrayElements = ByteArray::elements;
    table_.ReleaseByteArrayElements = ByteArray::release;
    table_.NewByteArray = ByteArray::create;
    table_.SetByteArrayRegion = ByteArray::fill;
    table_.GetIntArrayElements = IntArray::elements;
    table_.ReleaseIntArrayElements = IntArray::release;
    table_.NewIntArray = IntArray::create;
    table_.SetIntArrayRegion = IntArray::fill;
    table_.GetDoubleArrayElements = DoubleArray::elements;
    table_.ReleaseDoubleArrayElements = DoubleArray::release;
    table_.NewDoubleArray = DoubleArray::create;
    table_.SetDoubleArrayRegion = DoubleArray::fill;
    functions = &table_;
}

RecordingEnv::~RecordingEnv() {
    for (auto const& [elements, object] : given_out)
        ADD_FAILURE() << "elements of a " << object->type << " not released";
}

Object* RecordingEnv::make(Object object) { return &objects_.emplace_back(std::move(object)); }

jbyteArray RecordingEnv::bytes(std::string_view text) {
    CountingScope const off(false);
    auto* const array = make({"byte[]", ""});
    array->bytes.assign(text.begin(), text.end());
    return as<jbyteArray>(array);
}

jintArray RecordingEnv::ints(std::vector<jint> const& values) {
    CountingScope const off(false);
    auto* const array = make({"int[]", ""});
    array->ints = values;
    return as<jintArray>(array);
}

jdoubleArray RecordingEnv::doubles(std::vector<jdouble> const& values) {
    CountingScope const off(false);
    auto* const array = make({"double[]", ""});
    array->doubles = values;
    return as<jdoubleArray>(array);
}

jobjectArray RecordingEnv::strings(std::vector<std::string> const& texts) {
    CountingScope const off(false);
    auto* const array = make({"String[]", ""});
    for (auto const& text : texts) array->elements.push_back(make({"String", text}));
    return as<jobjectArray>(array);
}

jobjectArray RecordingEnv::proxies(std::string const& type, std::vector<std::optional<jlong>> const& handles) {
    CountingScope const off(false);
    auto* const array = make({type + "[]", ""});
    for (auto const& handle : handles) {
        array->elements.push_back(handle ? make({type, ""}) : nullptr);
        if (handle) array->elements.back()->handle = *handle;
    }
    return as<jobjectArray>(array);
}

}  // namespace pedflux::jni::test
