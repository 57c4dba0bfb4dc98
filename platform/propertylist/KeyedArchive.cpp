#include "platform/propertylist/KeyedArchive.h"

#include "platform/propertylist/PropertyListReaders.h"

#include <algorithm>
#include <initializer_list>

namespace tolvane::platform {

namespace {

constexpr std::uint64_t archivedElementWeight = 32;

std::uint64_t weightOf(const Value& value) {
    std::uint64_t weight = archivedElementWeight;
    if (const auto* const text = value.as<std::string>()) {
        weight += text->size();
    } else if (const auto* const data = value.as<Data>()) {
        weight += data->size();
    } else if (const auto* const array = value.as<Array>()) {
        for (const Value& element : *array) {
            weight += weightOf(element);
        }
    } else if (const auto* const dictionary = value.as<Dictionary>()) {
        for (const auto& [key, element] : *dictionary) {
            weight += key.size() + weightOf(element);
        }
    }
    return weight;
}

/// The number of the object that a value refers to, if it is a reference.
std::optional<std::uint64_t> referenceIn(const Value& value) {
    const auto* const dictionary = value.as<Dictionary>();
    if (dictionary == nullptr || dictionary->size() != 1) {
        return std::nullopt;
    }
    const Value* const number = dictionary->find("CF$UID");
    return number == nullptr ? std::nullopt : number->exactUInt64();
}

/// Whether an object has exactly these keys beside its class.
bool hasOnly(const Dictionary& object, std::initializer_list<std::string_view> keys) {
    const std::size_t classKeys = object.find("$class") == nullptr ? 0 : 1;
    return object.size() == keys.size() + classKeys
           && std::ranges::all_of(keys, [&](std::string_view key) { return object.find(key) != nullptr; });
}

class Unarchiver {
public:
    Unarchiver(const Array& objects, std::uint64_t mostWeight)
        : objects_(objects)
        , isOpen_(objects.size())
        , mostWeight_(mostWeight) {}

    UnarchivedObjects run(const Dictionary& top) {
        result_.top = plainDictionary(top, 0);
        return std::move(result_);
    }

private:
    /// A value of the archive with its references replaced.
    Value plain(const Value& value, unsigned level) {
        if (const auto number = referenceIn(value)) {
            return objectAt(value, *number, level);
        }
        const auto* const array = value.as<Array>();
        const auto* const dictionary = value.as<Dictionary>();
        if (array == nullptr && dictionary == nullptr) {
            return counted(value);
        }
        if (level == deepestArchivedObject) {
            ++result_.leftOut;
            return {};
        }
        return array != nullptr ? Value(plainArray(*array, level + 1))
                                : Value(plainDictionary(*dictionary, level + 1));
    }

    Value objectAt(const Value& reference, std::uint64_t number, unsigned level) {
        if (number >= objects_.size()) {
            ++result_.missing;
            return reference;
        }
        const Value& value = objects_[number];
        if (isOpen_[number]) {
            ++result_.cyclic;
            return reference;
        }
        if (level == deepestArchivedObject || weight_ > mostWeight_) {
            ++result_.leftOut;
            return reference;
        }
        if (const auto* const text = value.as<std::string>(); text != nullptr && *text == "$null") {
            return {};
        }
        isOpen_[number] = true;
        const auto* const object = value.as<Dictionary>();
        Value made = object != nullptr && !referenceIn(value) ? plainObject(*object, level + 1)
                                                              : plain(value, level + 1);
        isOpen_[number] = false;
        return made;
    }

    Value plainObject(const Dictionary& object, unsigned level) {
        weight_ += archivedElementWeight;
        if (hasOnly(object, {"NS.objects"})) {
            if (const auto* const elements = object.find("NS.objects")->as<Array>()) {
                return plainArray(*elements, level);
            }
        }
        if (hasOnly(object, {"NS.keys", "NS.objects"})) {
            const auto* const keys = object.find("NS.keys")->as<Array>();
            const auto* const values = object.find("NS.objects")->as<Array>();
            if (keys != nullptr && values != nullptr && keys->size() == values->size()) {
                return keyedValues(*keys, *values, level);
            }
        }
        if (auto value = simpleObject(object, level)) {
            return *std::move(value);
        }
        return plainDictionary(object, level);
    }

    /// Objects of the system's classes that are one value.
    std::optional<Value> simpleObject(const Dictionary& object, unsigned level) {
        for (const std::string_view key : {"NS.string", "NS.data", "NS.bytes"}) {
            if (hasOnly(object, {key})) {
                return plain(*object.find(key), level);
            }
        }
        if (hasOnly(object, {"NS.time"})) {
            const Value time = plain(*object.find("NS.time"), level);
            if (const auto* const seconds = time.as<double>()) {
                return Date(*seconds);
            }
        }
        if (hasOnly(object, {"NS.uuidbytes"})) {
            const Value bytes = plain(*object.find("NS.uuidbytes"), level);
            const auto* const data = bytes.as<Data>();
            UUID uuid;
            if (data != nullptr && data->size() == uuid.bytes.size()) {
                std::ranges::copy(*data, uuid.bytes.begin());
                return uuid;
            }
        }
        if (hasOnly(object, {"NS.base", "NS.relative"})) {
            const Value base = plain(*object.find("NS.base"), level);
            const Value part = plain(*object.find("NS.relative"), level);
            if (const auto* const text = part.as<std::string>()) {
                const auto* const baseText = base.as<std::string>();
                return baseText == nullptr ? *text : *text + " -- " + *baseText;
            }
        }
        return std::nullopt;
    }

    Array plainArray(const Array& elements, unsigned level) {
        Array array;
        array.reserve(elements.size());
        for (const Value& element : elements) {
            array.push_back(plain(element, level));
        }
        return array;
    }

    Dictionary plainDictionary(const Dictionary& dictionary, unsigned level) {
        std::vector<Dictionary::Entry> entries;
        entries.reserve(dictionary.size());
        for (const auto& [key, value] : dictionary) {
            weight_ += key.size();
            entries.push_back({key, key == "$class" ? className(value) : plain(value, level)});
        }
        return Dictionary::fromEntries(std::move(entries));
    }

    Dictionary keyedValues(const Array& keys, const Array& values, unsigned level) {
        std::vector<Dictionary::Entry> entries;
        entries.reserve(keys.size());
        for (std::size_t i = 0; i < keys.size(); ++i) {
            entries.push_back({keyText(plain(keys[i], level), i), plain(values[i], level)});
        }
        return Dictionary::fromEntries(std::move(entries));
    }

    static std::string keyText(const Value& key, std::size_t index) {
        if (const auto* const text = key.as<std::string>()) {
            return *text;
        }
        if (const auto* const uuid = key.as<UUID>()) {
            return uuid->text();
        }
        const auto number = key.exactInt64();
        return number ? std::to_string(*number) : "$" + std::to_string(index);
    }

    /// The name of the class that an object refers to; the value itself if it is not such a reference.
    Value className(const Value& value) {
        const auto number = referenceIn(value);
        const auto* const description =
            number && *number < objects_.size() ? objects_[*number].as<Dictionary>() : nullptr;
        const Value* const name = description == nullptr ? nullptr : description->find("$classname");
        if (name != nullptr && name->as<std::string>() != nullptr) {
            return counted(*name);
        }
        result_.missing += number ? 1U : 0U;
        return counted(value);
    }

    Value counted(const Value& value) {
        if (weight_ > mostWeight_) {
            ++result_.leftOut;
            return {};
        }
        weight_ += weightOf(value);
        return value;
    }

    const Array& objects_;
    std::vector<bool> isOpen_; ///< Which objects are being unarchived, by their numbers.
    std::uint64_t weight_ = 0;
    std::uint64_t mostWeight_;
    UnarchivedObjects result_;
};

} // namespace

std::optional<UnarchivedObjects> unarchivedObjects(const Value& list) {
    const auto* const archive = list.as<Dictionary>();
    const Value* const objects = archive == nullptr ? nullptr : archive->find("$objects");
    const Value* const top = archive == nullptr ? nullptr : archive->find("$top");
    if (objects == nullptr || top == nullptr || objects->as<Array>() == nullptr
        || top->as<Dictionary>() == nullptr || referenceIn(*top)) {
        return std::nullopt;
    }
    const std::uint64_t mostWeight = weightOf(list) * mostPropertyListGrowth + propertyListAllowance;
    return Unarchiver(*objects->as<Array>(), mostWeight).run(*top->as<Dictionary>());
}

} // namespace tolvane::platform
