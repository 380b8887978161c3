#pragma once

#include "engine/model/document.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace pedflux::engine {

/// A document with an object of every kind. Every field of its states that can has another value than by default, made
/// from the states' own lists of fields and rules: numbers differ from each other, references lead to objects of the
/// right kind.
std::unique_ptr<Document> filled_document();

/// The fields of every kind, by the kind's name.
std::map<std::string, std::vector<std::string>> fields_of_kinds();

}  // namespace pedflux::engine
