// What the module takes from the rest of the toolkit and from the standard library. The names stand
// in the module's namespace, as the imports of a module written in Python would.
#pragma once

#include "host/global.hpp"
#include "host/text.hpp"

namespace dsettlement {

struct Toolkit {
  explicit Toolkit(host::Module& module) : module_(module) {}

 private:
  host::Module& module_;

 public:
  host::Imported model_error{module_, "sembra.errors", "ModelError"};
  host::Imported parsing_error{module_, "sembra.errors", "ParsingError"};
  host::Imported internal_error{module_, "sembra.errors", "InternalError"};

  // Raises ModelError with a message in which each {} stands for the next value.
  [[noreturn]] void refuse(std::string_view message,
                           std::initializer_list<host::Handle> values = {}) const {
    host::raise(model_error.original(), host::text(message, values));
  }
  // The same in the place of an error that has been caught.
  [[noreturn]] void refuse_instead_of(const host::Ref& failure, std::string_view message) const {
    host::raise_instead_of(model_error.original(), host::text(message, {}), failure);
  }

  host::Imported color{module_, "sembra.core", "Color"};
  host::Imported file{module_, "sembra.core", "File"};
  host::Imported post{module_, "sembra.core", "_post_on_addon_endpoint"};

  host::Imported external_program{module_, "sembra.external.external_program", "ExternalProgram"};
  host::Imported job_content{module_, "sembra.external.external_program", "_JobContent"};
  host::Imported exception_map{module_, "sembra.external.external_program",
                               "_dseries_exception_map"};
  host::Imported file_body{module_, "sembra.external.external_program", "_get_dseries_file_body"};

  host::Imported abstract_metaclass{module_, "abc", "ABCMeta"};
  host::Imported b64encode{module_, "base64", "b64encode"};
  host::Imported bytes_io{module_, "io", "BytesIO"};
  host::Imported string_io{module_, "io", "StringIO"};
  host::Imported datetime{module_, "datetime", "datetime"};
  host::Imported ordered_dict{module_, "collections", "OrderedDict"};
  // For the declared types of operations, which tools look up in the module.
  host::Imported any{module_, "typing", "Any"};
};

}  // namespace dsettlement
