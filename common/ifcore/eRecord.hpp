#pragma once

#include "eArchive.hpp"
#include "eInterfaceTableHooks.hpp"
#include "eSubId.hpp"

#include <cstddef>
#include <list>
#include <tuple>
#include <utility>
#include <vector>

// What all records share: comparing, reaching the observer, announcing a change, editing a field by its sub-id.

class EComponentId;
class EInterfaceItem;

/// The observer that ignores all: one for the process.
EInterfaceTableHooks& IgnoringHooks();

/// The observer that hears of changes to a record of this interface; one that ignores all without an owner.
EInterfaceTableHooks& HooksOf(EInterfaceItem const* owner);

/// The component id of a record: its owner's path (empty without an owner) and the record's fixed leaf.
void GetLeafID(EInterfaceItem const* owner, unsigned int leaf, EComponentId& id);

// Comparing. The element types have operator!= only.

template <class Field> bool FieldsDiffer(Field const& a, Field const& b)
{
    return a != b;
}
template <class Sequence> bool SequencesDiffer(Sequence const& a, Sequence const& b)
{
    if (a.size() != b.size()) return true;
    auto other = b.begin();
    for (auto const& element : a)
        if (element != *other++) return true;
    return false;
}
template <class Element> bool FieldsDiffer(std::list<Element> const& a, std::list<Element> const& b)
{
    return SequencesDiffer(a, b);
}
template <class Element> bool FieldsDiffer(std::vector<Element> const& a, std::vector<Element> const& b)
{
    return SequencesDiffer(a, b);
}
template <class Fields, std::size_t... index>
bool AnyFieldDiffers(Fields const& a, Fields const& b, std::index_sequence<index...>)
{
    return (FieldsDiffer(std::get<index>(a), std::get<index>(b)) || ...);
}
/// Whether any of the fields bound in two ties differs, compared in their order.
template <class... Field> bool Differ(std::tuple<Field&...> const& a, std::tuple<Field&...> const& b)
{
    return AnyFieldDiffers(a, b, std::index_sequence_for<Field...>());
}

// Announcing.

/// Announces the new value while the record still holds the old one, then stores it. The copy is made first: what has
/// been announced cannot fail any more, and \p value may belong to what the observer changes meanwhile.
template <class Record, class Hooks, class Announced, class Field, class Value>
void NotifyAndStore(Record& record, void (Hooks::*operation)(Record const&, Announced), Field& field,
                    Value const& value)
{
    Field next(value);
    (record.GetHooks().*operation)(record, static_cast<Announced>(next));
    field = std::move(next);
}

/// For fields that share a packed word: on purpose stores the new word first and announces the field's new value
/// afterwards, so that the observer already sees it in the record.
template <class Record, class Announced, class Word, class Value>
void StoreAndNotify(Record& record, void (EInterfaceTableHooks::*operation)(Record const&, Announced), Word& word,
                    Word const& newWord, Value const& value)
{
    word = newWord;
    (record.GetHooks().*operation)(record, static_cast<Announced>(value));
}

/// Announces the replacement of the whole record once, then swaps the new contents in. The parent stays.
template <class Record, class Hooks>
void NotifyAndSwap(Record& record, void (Hooks::*operation)(Record const&, Record const&), Record&& replacement)
{
    (record.GetHooks().*operation)(record, replacement);
    record.Swap(replacement);
}

// Editing.

/// One row of a record's edit table: the sub-id, and what reads the new value and sets it.
template <class Record> struct EEdit {
    unsigned int subId;
    void (*apply)(Record&, EArchive&);
};

template <class Class, class Result, class Argument> Argument ArgumentOf(Result (Class::*)(Argument));

/// Reads one value of the given type and hands it to the setter, whose own correction of it still counts as done.
template <class Read, auto setter, class Record> void ReadAndSet(Record& record, EArchive& archive)
{
    Read value{};
    archive >> value;
    (record.*setter)(static_cast<decltype(ArgumentOf(setter))>(value));
}

/// Reads a count and that many elements, then hands the whole new list to the setter.
template <class List, auto setter, class Count = unsigned int, class Record>
void ReadListAndSet(Record& record, EArchive& archive)
{
    Count count{};
    archive >> count;
    List list;
    for (Count i = 0; i < count; ++i) {
        typename List::value_type element;
        archive >> element;
        list.push_back(std::move(element));
    }
    (record.*setter)(list);
}

/// Edits the field that the first sub-id picks. False, with nothing read, for an empty range or an unknown sub-id.
template <class Record, std::size_t count>
bool EditField(EEdit<Record> const (&edits)[count], Record& record, ESubId first, ESubId last, EArchive& archive)
{
    if (first == last) return false;
    for (EEdit<Record> const& edit : edits) {
        if (edit.subId != *first) continue;
        edit.apply(record, archive);
        return true;
    }
    return false;
}
