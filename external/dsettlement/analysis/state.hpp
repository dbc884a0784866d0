// What input generation and the analysis job work with.
#pragma once

#include "toolkit.hpp"

namespace dsettlement::analysis {

struct State {
  State(host::Module& module, const Toolkit& shared) : toolkit(shared), module_(module) {}

  const Toolkit& toolkit;

 private:
  host::Module& module_;

 public:
  host::Global metadata{module_, "Metadata"};
  host::Global analysis{module_, "DSettlementAnalysis"};

  struct Names {
    host::Name init{"__init__"};
    host::Name private_serialize{"_serialize"};
    host::Name private_validate{"_validate"};
    host::Name x{"x"};

    // Metadata: attributes and keys.
    host::Name private_file_name{"_file_name"};
    host::Name private_company{"_company"};
    host::Name private_created_by{"_created_by"};
    host::Name private_title_1{"_title_1"};
    host::Name private_title_2{"_title_2"};
    host::Name private_title_3{"_title_3"};
    host::Name private_write_date{"_write_date"};
    host::Name private_write_time{"_write_time"};
    host::Name date{"date"};
    host::Name time{"time"};
    host::Name file_name{"file_name"};
    host::Name company{"company"};
    host::Name created_by{"created_by"};
    host::Name title_1{"title_1"};
    host::Name title_2{"title_2"};
    host::Name title_3{"title_3"};
    host::Name now{"now"};
    host::Name strftime{"strftime"};

    // Input generation.
    host::Name private_generate_input{"_generate_input"};
    host::Name dissipation_calculation{"dissipation_calculation"};
    host::Name endpoint{"filldsettlementtemplate/v1/jobs/"};
    host::Name input{"input"};
    host::Name timeout{"timeout"};
    host::Name input_file{"input_file"};
    host::Name from_data{"from_data"};
    host::Name encode{"encode"};
    host::Name notes{"__notes__"};
    host::Name add_note{"add_note"};

    // Analysis job.
    host::Name tool{"dsettlement"};
    host::Name version{"version"};
    host::Name body{"body"};
    host::Name getvalue{"getvalue"};
    host::Name getvalue_binary{"getvalue_binary"};
    host::Name decode{"decode"};
    host::Name utf_8{"utf-8"};
    host::Name get{"get"};
    host::Name private_get_result_content{"_get_result_content"};
    host::Name get_output_file{"get_output_file"};
    host::Name extension{"extension"};
    host::Name as_file{"as_file"};
    host::Name sld{".sld"};
  } names;
};

}  // namespace dsettlement::analysis
