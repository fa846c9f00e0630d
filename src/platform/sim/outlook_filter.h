#pragma once
// An Outlook item filter, as Items.Restrict and Items.Find take it, read once and then matched
// against many items.
//
// Two forms:
//   Jet   [Subject] = 'Hello' AND [ReceivedTime] >= '2024-01-05 10:00'
//   DASL  @SQL="urn:schemas:httpmail:subject" LIKE 'Re:%' OR NOT "urn:schemas:httpmail:read" = 1
// with AND, OR, NOT (binding in that order, NOT tightest) and parentheses. Operators are
// = <> < > <= >=, plus LIKE in DASL with % matching any run of characters. Text compares
// without regard to case, as Outlook does. Date literals are 'yyyy-mm-dd', 'yyyy-mm-dd hh:nn'
// or 'yyyy-mm-dd hh:nn:ss'; booleans True/False or 1/0; sizes whole numbers.
//
// Real Outlook compares DASL dates in UTC and Jet dates in local time. The sim has no time
// zone: both forms compare the literal with the stored dates directly, so a test that wants
// to check the core's conversion does so through the clock it gives the core.
//
// A filter Outlook could not read throws corvina::Error ("Cannot parse condition. Error at
// "..."." or, for an unknown property, "The property "X" is unknown.").
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sim/outlook_item_data.h"
#include "platform/sim/outlook_properties.h"

namespace corvina::sim {

class SimFilter {
 public:
  explicit SimFilter(std::wstring_view text);
  bool Matches(const SimItemData& item) const { return Eval(root_, item); }

  enum class Op { kEq, kNe, kLt, kGt, kLe, kGe, kLike };
  struct Node {
    enum class Kind { kAnd, kOr, kNot, kCompare };
    Kind kind = Kind::kCompare;
    int left = -1;
    int right = -1;
    const SimProperty* property = nullptr;
    Op op = Op::kEq;
    int64_t number = 0;
    std::wstring text;
  };

 private:
  bool Eval(int node, const SimItemData& item) const;

  std::vector<Node> nodes_;
  int root_ = -1;
};

// Case-insensitive match of `text` against a LIKE pattern where % stands for any run.
bool LikeMatch(std::wstring_view text, std::wstring_view pattern);

}  // namespace corvina::sim
