#include "save/taken_off.h"

#include <algorithm>
#include <string_view>

#include "save/start_tag.h"

namespace pagescan::tool {

namespace {

// What goes, in the order of the bits and counts.
enum Taken : unsigned { kIntegrity, kCrossorigin, kHttpEquiv, kHref, kCharset };

struct Row {
  std::string_view attribute;
  std::string_view message;  // empty: not worth one
};

constexpr Row kRows[] = {
    {"integrity", "integrity"},
    {"crossorigin", "crossorigin"},
    {"http-equiv", "http-equiv (a policy or an encoding)"},
    {"href", "href of base"},
    {"charset", ""},
};

constexpr char kPlaces[] =
    "standard\thtml\tmeta\thttp-equiv\turl\tidentifier\t\n"
    "standard\thtml\tmeta\tcharset\turl\tidentifier\t\n";

bool equals(std::string_view a, std::string_view lower) {
  return std::equal(a.begin(), a.end(), lower.begin(), lower.end(), [](char x, char y) {
    return (x >= 'A' && x <= 'Z' ? static_cast<char>(x + 32) : x) == y;
  });
}

unsigned bit(Taken taken) {
  return 1U << taken;
}

}  // namespace

const Places& placesOfInterest() {
  static const Places places = Places::parse(kPlaces).value_or(Places());
  return places;
}

void TakenOff::look(const Reference& reference, bool isCopy) {
  const std::string_view attribute = page_.attribute(reference);
  const auto isOf = [&](std::string_view element, std::string_view name) {
    return attribute == name && page_.element(reference) == element;
  };
  if (isCopy) {
    if (reference.kind == Kind::load && !attribute.empty() && attribute != "style") {
      tags_[reference.tag] |= bit(kIntegrity) | bit(kCrossorigin);
    }
  } else if (isOf("meta", "http-equiv")) {
    const std::string value = page_.value(reference);
    const bool isEncoding = equals(value, "content-type");
    if (equals(value, "content-security-policy") || (isEncoding && takesEncoding_)) {
      tags_[reference.tag] |= bit(kHttpEquiv);
    }
  } else if (isOf("meta", "charset")) {
    if (takesEncoding_) tags_[reference.tag] |= bit(kCharset);
  } else if (isOf("base", "href")) {
    tags_[reference.tag] |= bit(kHref);
  }
}

std::vector<ByteEdit> TakenOff::edits() {
  std::vector<ByteEdit> edits;
  for (const auto& [tag, bits] : tags_) {
    for (const TagAttribute& attribute : attributesAt(page_.bytes(), tag, page_.encoding())) {
      for (unsigned taken = 0; taken < counts_.size(); ++taken) {
        if ((bits >> taken & 1) == 0 || attribute.name != kRows[taken].attribute) continue;
        edits.push_back({removalOf(attribute, page_.bytes(), page_.encoding()), "", std::nullopt});
        ++counts_[taken];
      }
    }
  }
  return edits;
}

std::vector<std::string> TakenOff::messages() const {
  std::vector<std::string> messages;
  for (std::size_t i = 0; i < counts_.size(); ++i) {
    if (counts_[i] == 0 || kRows[i].message.empty()) continue;
    messages.push_back("taken off: " + std::string(kRows[i].message) +
                       (counts_[i] == 1 ? "" : ", " + std::to_string(counts_[i]) + " times"));
  }
  return messages;
}

}  // namespace pagescan::tool
