#include "tools/java_generator/reference.h"

#include "tools/java_generator/proxies.h"
#include "tools/java_generator/text.h"

namespace pedflux::java {

namespace {

using manifest::Role;

std::string method_entry(Method const& method, Names const& names) {
    auto const& exported = *method.exported;
    bool const is_virtual = method.declared && method.declared->is_virtual;
    std::string const signature =
        exported.role == Role::constant ? exported.class_name + " " + exported.operation : java_signature(method);
    return fill(
        "<dt><code>$1$2</code><dd>$3<small>$4: <code>$5</code></small>\n",
        {exported.role == Role::static_method || exported.role == Role::constant ? "static " : "", escaped(signature),
         html(method.comment(), names), exported.name, escaped(manifest::operation_spelling(exported, is_virtual))});
}

std::string class_section(Class const& one, Names const& names) {
    std::string entries;
    for (auto const& method : one.methods) {
        if (method.exported->role == Role::destructor || method.exported->role == Role::upcast) continue;
        entries += method_entry(method, names);
    }
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

}  // namespace

std::string reference_page(Surface const& surface, Names const& names) {
    std::string sections;
    for (auto const& [name, one] : surface.classes) sections += class_section(one, names);
    for (auto const& [name, declared] : surface.enumerations) sections += enumeration_section(name, declared, names);
    return fill(R"(<!DOCTYPE html>
<html lang="en">
<meta charset="utf-8">
<title>com.kelvar.pedflux</title>
<style>
body { font: 16px/1.5 sans-serif; max-width: 60em; margin: auto; padding: 1em }
input { position: sticky; top: 0; width: 100%; font-size: inherit; padding: .4em; box-sizing: border-box }
small { display: block; color: #666 }
dd { margin-bottom: .6em }
</style>
<h1>com.kelvar.pedflux</h1>
<input type="search" placeholder="Search classes and methods" autofocus>
$1<script>
// A class shows whole when its name matches, otherwise with the entries that match.
const has = (element, words) => words.every(word => element.textContent.toLowerCase().includes(word));
document.querySelector('input').oninput = event => {
    const words = event.target.value.toLowerCase().split(/\s+/);
    for (const section of document.querySelectorAll('section')) {
        const whole = has(section.querySelector('h2'), words);
        let any = whole;
        for (const entry of section.querySelectorAll('dt')) {
            const shown = whole || has(entry, words);
            entry.hidden = entry.nextElementSibling.hidden = !shown;
            any ||= shown;
        }
        section.hidden = !any;
    }
};
</script>
</html>
)",
                {sections});
}

}  // namespace pedflux::java
