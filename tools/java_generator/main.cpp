#include "tools/java_generator/documentation.h"
#include "tools/java_generator/headers.h"
#include "tools/java_generator/module_class.h"
#include "tools/java_generator/proxies.h"
#include "tools/java_generator/reference.h"
#include "tools/java_generator/surface.h"
#include "tools/java_generator/text.h"
#include "tools/manifest/manifest.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace pedflux;
using namespace pedflux::java;

/// Names that are one word, as "Open", are words of the language too and stay as they are.
bool is_compound(std::string const& name) {
    return std::count_if(name.begin(), name.end(), [](unsigned char letter) { return std::isupper(letter) != 0; }) > 1;
}

Names java_names() {
    Names names;
    for (auto const& exported : manifest::exports()) {
        bool const named = exported.role == manifest::Role::method || exported.role == manifest::Role::static_method;
        if (named && is_compound(exported.operation)) names[exported.operation] = exported.method_name();
    }
    return names;
}

/// One line for each export: the native method, its Java arguments, its result and the SDK operation.
std::string surface_table(Surface const& surface) {
    std::string table = "export\targuments\tresult\tsdk operation\n";
    for (auto const& exported : manifest::exports()) {
        std::vector<std::string> arguments;
        bool const takes_handle =
            exported.role == manifest::Role::destructor || exported.role == manifest::Role::upcast;
        if (exported.has_object() || takes_handle) arguments.push_back(exported.class_name);
        for (auto const& parameter : exported.parameters) arguments.push_back(manifest::native_spelling(parameter));
        auto const* const declared = surface.headers.find(exported);
        manifest::Export introduced = exported;
        introduced.owner = surface.headers.introducing_class(exported);
        table +=
            fill("$1\t$2\t$3\t$4\n", {exported.name, joined(arguments, ","), manifest::native_spelling(exported.result),
                                      manifest::operation_spelling(introduced, declared && declared->is_virtual)});
    }
    return table;
}

std::string export_list() {
    std::vector<std::string> lines;
    for (auto const& exported : manifest::exports())
        lines.push_back(exported.name + manifest::descriptor(exported) + "\n");
    std::sort(lines.begin(), lines.end());
    return joined(lines, "");
}

/// Removes files that were written before and no longer are. Returns whether there were any.
bool remove_others(std::filesystem::path const& folder, std::set<std::filesystem::path> const& written) {
    std::vector<std::filesystem::path> others;
    for (auto const& entry : std::filesystem::directory_iterator(folder)) {
        if (!written.contains(entry.path())) others.push_back(entry.path());
    }
    for (auto const& other : others) std::filesystem::remove(other);
    return !others.empty();
}

/// Writes the Java sources and the list of them that the Java compiler reads. The list is new when any source is.
void write_java(std::filesystem::path const& output, Surface const& surface, Names const& names) {
    std::filesystem::path const package = output / "java/com/kelvar/pedflux";
    std::set<std::filesystem::path> sources;
    std::string list;
    bool any_new = false;
    auto const write = [&](std::string const& name, std::string const& source) {
        std::filesystem::path const path = package / (name + ".java");
        any_new = write_file(path, source) || any_new;
        sources.insert(path);
        list += fill("\"$1\"\n", {path.string()});
    };
    write("pedfluxJNI", module_class(manifest::exports(), surface));
    write("ReleaseTable", release_table(surface));
    for (auto const& [name, one] : surface.classes) {
        // The exception is a Java exception too, and written by hand.
        if (name != "Exception") write(name, proxy(one, surface, names));
    }
    for (auto const& [name, declared] : surface.enumerations) write(name, enumeration(name, declared, names));
    if (remove_others(package, sources) || any_new) std::filesystem::remove(output / "sources.txt");
    write_file(output / "sources.txt", list);
}

}  // namespace

/// Writes into the output directory: java/ with the generated sources, exports.txt with every native method and its JNI
/// descriptor, surface.tsv with the SDK operations behind them, and reference.html.
int main(int count, char** arguments) {
    if (count != 3) {
        std::fprintf(stderr, "usage: %s <the SDK's include directory> <output directory>\n", arguments[0]);
        return 2;
    }
    try {
        std::filesystem::path const output = arguments[2];
        Surface const surface = join(manifest::exports(), read_headers(arguments[1]));
        Names const names = java_names();
        write_java(output, surface, names);
        write_file(output / "reference.html", reference_page(surface, names));
        write_file(output / "exports.txt", export_list());
        write_file(output / "surface.tsv", surface_table(surface));
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "%s: %s\n", arguments[0], failure.what());
        return 1;
    }
    return 0;
}
