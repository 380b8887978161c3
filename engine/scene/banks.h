#pragma once

#include "engine/model/check.h"
#include "engine/model/document.h"
#include "engine/model/lists.h"
#include "engine/scene/group_states.h"

#include <string>
#include <vector>

/// Banks are groups that share no items: an object belongs to at most one bank of a kind. The membership is stored in
/// the banks' lists of items only.
namespace pedflux::engine {

/// The bank of the kind that lists the object; null if there is none.
template <class Bank>
Bank* bank_with(ObjectState const& item) {
    if (item.document == nullptr) return nullptr;
    for (auto* const bank : item.document->objects<Bank>()) {
        if (lists(bank->items, item.id)) return bank;
    }
    return nullptr;
}

/// Removes the bank's items from all other banks of its kind.
template <class Bank>
void claim_items(Bank const& bank) {
    for (auto* const other : bank.document->template objects<Bank>()) {
        if (other == &bank) continue;
        std::erase_if(other->items, [&](GlobalId const& item) { return lists(bank.items, item); });
    }
}

/// Moves an object into a bank and out of its previous one.
template <class Bank>
void join_bank(Bank& bank, GlobalId const& item) {
    if (!lists(bank.items, item)) bank.items.push_back(item);
    claim_items(bank);
}

template <class Bank>
void leave_bank(ObjectState const& item) {
    if (auto* const bank = bank_with<Bank>(item)) {
        std::erase_if(bank->items, [&](GlobalId const& other) { return other.InternalEquals(item.id); });
    }
}

/// Throws Exception when an item is in another bank as well. `items` names them: "elevators".
template <class Bank>
void require_unshared_items(Bank const& bank, std::string const& items) {
    for (auto const* const other : bank.document->template objects<Bank>()) {
        if (other == &bank) return;  // later banks check against this one
        for (GlobalId item : bank.items) {
            if (!lists(other->items, item)) continue;
            Subject{owner_of(bank), "items"}.refuse(items + " that are in no other bank",
                                                    "one with " + item.GetString() + " of " + title_of(*other));
        }
    }
}

}  // namespace pedflux::engine
