// The tables of [Time-dependent Data], one per time.
#pragma once

#include <utility>

#include "output/stage_two/columns.hpp"
#include "output/stage_two/headers.hpp"

namespace dsettlement::output {

// Of blocks with equal times the later wins, in the place of the first.
class TimeTables {
 public:
  explicit TimeTables(Headers headers) : headers_(std::move(headers)) {}

  // True if rows are read at all.
  [[nodiscard]] bool reads_rows() const noexcept { return headers_.column_count() > 0; }

  // Adds a block. Raises what reading its columns raises.
  template <typename Character>
  void add(host::Handle time, Text<Character> rows) {
    if (!reads_rows() || rows.empty()) return add_without_rows(time);
    columns_ = build_columns(rows, headers_, columns_);
    tables_.put(time, headers_.table(columns_));
  }

  // Adds a block in which nothing can fail. Its lists are made last of all, when it is known that
  // no later block of the same time takes its place: else a text with many headers and many equal
  // times would ask for lists by their product, only to throw them away.
  void add_without_rows(host::Handle time) { tables_.put(time, host::none()); }

  [[nodiscard]] host::Ref done();

 private:
  Headers headers_;
  host::Mapping tables_;
  std::vector<host::Ref> columns_;  // of the latest block with rows: numbers are likely to recur
};

}  // namespace dsettlement::output
