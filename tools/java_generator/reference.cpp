#include "tools/java_generator/reference.h"

#include "tools/java_generator/proxies.h"
#include "tools/java_generator/text.h"

namespace pedflux::java {

namespace {

using manifest::Role;

/// The Java side of an export: a method's signature, or how a program gets at what has no method.
std::string java_spelling(Method const& method) {
    auto const& exported = *method.exported;
    switch (exported.role) {
        case Role::constant:
            return "static " + exported.class_name + " " + exported.operation;
        case Role::destructor:
            return "void delete()";
        case Role::upcast:
            return "the object as one of its base class, made when it is needed";
        case Role::static_method:
            return "static " + java_signature(method);
        case Role::constructor:
        case Role::method:
        case Role::extension:
            break;
    }
    return java_signature(method);
}

std::string method_entry(Method const& method, Names const& names) {
    auto const& exported = *method.exported;
    bool const is_virtual = method.declared && method.declared->is_virtual;
    return fill("<dt id='$1'><a href='#$1'><code>$2</code></a><dd>$3<small>$1: <code>$4</code></small>\n",
                {exported.name, escaped(java_spelling(method)), html(method.comment(), names),
                 escaped(manifest::operation_spelling(exported, is_virtual))});
}

std::string class_section(Class const& one, Names const& names) {
    std::string entries;
    for (auto const& method : one.methods) entries += method_entry(method, names);
    std::string const base = one.base.empty() ? "" : fill(" extends <a href='#$1'>$1</a>", {one.base});
    return fill("<section id='$1'><h2>$1$2</h2>\n$3<dl>\n$4</dl></section>\n",
                {one.name, base, html(one.comment(), names), entries});
}

std::string enumeration_section(std::string const& name, Enumeration const& declared, Names const& names) {
    std::string entries;
    for (auto const& constant : declared.constants) {
        entries += fill("<dt><code>$1</code> = $2<dd>$3\n",
                        {constant.name, std::to_string(constant.value), html(constant.comment, names)});
    }
    return fill("<section id='$1'><h2>enum $1</h2>\n$2<dl>\n$3</dl></section>\n",
                {name, html(declared.comment, names), entries});
}

std::string link_to(std::string const& name) { return fill("<a href='#$1'>$1</a>\n", {name}); }

}  // namespace

std::string reference_page(Surface const& surface, Names const& names) {
    std::string links;
    std::string sections;
    std::size_t exports = 0;
    for (auto const& [name, one] : surface.classes) {
        links += link_to(name);
        sections += class_section(one, names);
        exports += one.methods.size();
    }
    for (auto const& [name, declared] : surface.enumerations) {
        links += link_to(name);
        sections += enumeration_section(name, declared, names);
    }
    return fill(R"(<!DOCTYPE html>
<html lang="en">
<meta charset="utf-8">
<title>com.kelvar.pedflux</title>
<style>
body { font: 16px/1.5 sans-serif; max-width: 60em; margin: auto; padding: 1em }
form { position: sticky; top: 0; background: white; padding: .5em 0 }
input { width: 100%; font-size: inherit; padding: .4em; box-sizing: border-box }
nav { columns: 18em; font-size: .9em }
nav a { display: block }
dt a { color: inherit; text-decoration: none }
dt { scroll-margin-top: 5em }
section { scroll-margin-top: 4em }
small { display: block; color: #666; overflow-wrap: anywhere }
dd { margin-bottom: .6em }
:target { background: #ffc }
</style>
<h1>com.kelvar.pedflux</h1>
<p>$1 classes with $2 exports, and $3 enumerations. Below each method stands the native method and the SDK operation
that it calls.</p>
<form><input type="search" placeholder="Search classes, methods and SDK operations" autofocus>
<small></small></form>
<details><summary>All names</summary><nav>
$4</nav></details>
$5<script>
// A class shows whole when its name has all words, otherwise with the entries that have them.
const input = document.querySelector('input');
const text = element => element.textContent.toLowerCase();
const signature = entry => text(entry) + ' ' + text(entry.nextElementSibling.querySelector('small') ?? entry);
const sections = [...document.querySelectorAll('section')].map(section => ({
    section,
    name: text(section.querySelector('h2')),
    entries: [...section.querySelectorAll('dt')].map(entry => ({entry, text: signature(entry)})),
}));
const search = () => {
    const words = input.value.toLowerCase().split(/\s+/);
    const has = where => words.every(word => where.includes(word));
    let found = 0;
    for (const {section, name, entries} of sections) {
        const whole = has(name);
        let shown = 0;
        for (const {entry, text} of entries) {
            const show = whole || has(text);
            entry.hidden = entry.nextElementSibling.hidden = !show;
            shown += show;
        }
        section.hidden = !whole && shown === 0;
        found += shown;
    }
    document.querySelector('form small').textContent = input.value ? found + ' found' : '';
};
input.oninput = search;
document.querySelector('form').onsubmit = () => false;
// A link leads also to what the search hides.
onhashchange = () => {
    const target = document.getElementById(location.hash.slice(1));
    if (!target || !target.closest('[hidden]')) return;
    input.value = '';
    search();
    target.scrollIntoView();
};
</script>
</html>
)",
                {std::to_string(surface.classes.size()), std::to_string(exports),
                 std::to_string(surface.enumerations.size()), links, sections});
}

}  // namespace pedflux::java
