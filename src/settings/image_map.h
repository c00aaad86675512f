#pragma once

#include <array>
#include <bit>
#include <cstdint>

/// Where everything lies in the 256-byte image. The one place with an offset into it: no other file has a
/// literal byte number. docs/image-map.md tells what the bytes mean to the box.
namespace kx::map {

constexpr int image_size = 256;

/// Single bytes, by what they hold.
constexpr int mirror = 0;  ///< copy of flags_c
constexpr int flags_a = 1;
constexpr int flags_b = 2;
constexpr int load_base = 3;
constexpr int pwm_load_base = 4;
constexpr int sensor_selects = 5;
constexpr int rpm_calc = 6;
constexpr int low_air_correction = 7;
constexpr int low_air_limit = 8;
constexpr int high_air_correction = 9;
constexpr int high_air_limit = 10;
constexpr int in_boost_level = 11;
constexpr int an_gain = 13;
constexpr int an_offset = 14;
constexpr int analog_sync = 15;
constexpr int rpm_calc_slave = 16;
constexpr int rpm_limit = 17;
constexpr int rpm_open_injectors = 18;
constexpr int volt_open_injectors = 19;
constexpr int max_total_retard = 20;
constexpr int pulse_open_injectors = 21;
constexpr int flags_c = 22;
constexpr int boost_limit = 23;
constexpr int injector_offset_master_e = 24;
constexpr int injector_offset_slave_a = 25;
constexpr int injector_offset_slave_e = 29;
constexpr int an2_function_limit = 30;
constexpr int ae_threshold = 31;
constexpr int ae_gain = 32;
constexpr int ae_sustain = 33;
constexpr int rpm_indicator = 34;
constexpr int injector_calibration = 35;
constexpr int injector_offset_master_a = 36;
constexpr int injector_offset_master_d = 39;
constexpr int boost_init = 40;
constexpr int boost_p = 41;
constexpr int boost_i = 42;
constexpr int boost_d = 43;
constexpr int ignition_flags = 44;
constexpr int an2_boost_activation = 173;
constexpr int an2_activation_level = 174;
constexpr int reserved_low = 250;
constexpr int reserved_high = 251;
constexpr int card_checksum = 254;
constexpr int dataset = 255;

/// A run of table bytes.
struct Run {
  int first;
  int count;
  [[nodiscard]] constexpr int Last() const { return first + count - 1; }
};

constexpr Run ignition_load{46, 33};
constexpr Run ignition_rpm{79, 21};
constexpr Run maf_limit{79, 21};  ///< overlays ignition_rpm; its first entry is the ignition of all RPMs
constexpr Run fuel_load{100, 33};
constexpr Run fuel_rpm{133, 21};
constexpr Run fuel_rpm_fine{133, 41};  ///< at 250 RPM resolution, takes over the Analog 2 table
constexpr Run analog2{154, 21};
constexpr Run analog2_curve{154, 17};
constexpr Run analog1{175, 21};
constexpr Run maf_output{175, 17};  ///< overlays analog1
constexpr Run pwm_load{196, 33};
constexpr Run pwm_rpm{229, 21};
constexpr Run card_sum{1, 253};  ///< what card_checksum sums up

/// The last byte that a synchronous comparison or write looks at; the timer-driven one stops a byte earlier.
constexpr int last_compared = 250;

/// A field of one or more bits, holding a list index shifted to the field's lowest bit.
struct Field {
  int byte;
  std::uint8_t mask;
  [[nodiscard]] constexpr int Lowest() const { return 1 << std::countr_zero(mask); }
};

constexpr Field fuel_enrichment_strategy{flags_a, 0x04};
constexpr Field slave_mode{flags_a, 0x08};
constexpr Field fuel_rpm_250{flags_a, 0x40};  ///< shares its bit with max_retard_enable
constexpr Field max_retard_enable{flags_a, 0x40};
constexpr Field retard_on_ae{flags_a, 0x80};
constexpr Field io_mode_4{flags_b, 0x04};
constexpr Field pwm_on_off{flags_b, 0x08};
constexpr Field boost_pid{flags_b, 0x20};
constexpr Field maf_sim_output{flags_b, 0x40};  ///< stored inverted: 1 minus list index
constexpr Field maf_sim_limit{flags_b, 0x80};
constexpr Field ignition_load_second{load_base, 0x03};
constexpr Field ignition_load_input{load_base, 0x0C};
constexpr Field fuel_load_second{load_base, 0x30};
constexpr Field fuel_load_input{load_base, 0xC0};
constexpr Field pwm_load_input{pwm_load_base, 0x03};
constexpr Field boost_input{sensor_selects, 0x03};
constexpr Field maf_sim_input{sensor_selects, 0x0C};
constexpr Field ae_input{sensor_selects, 0x30};
constexpr Field air_temperature_input{sensor_selects, 0xC0};
constexpr Field semi_sequential_fuel{analog_sync, 0x40};
constexpr Field fuel_not_extended{flags_c, 0x01};
constexpr Field an2_mode{flags_c, 0x06};
constexpr Field an2_is_curve{flags_c, 0x02};  ///< low bit of an2_mode
constexpr Field maf_sim_enable{flags_c, 0x10};
constexpr Field fuel_by_pwm{flags_c, 0x20};
constexpr Field io_mode{flags_c, 0xC0};
constexpr Field ignition_mode_master{ignition_flags, 0x03};
constexpr Field ignition_mode_slave{ignition_flags, 0x0C};
constexpr Field ignition_load_in_percent{ignition_flags, 0x10};
constexpr Field ignition_rpm_fine{ignition_flags, 0x20};
constexpr Field individual_trim{ignition_flags, 0x40};
constexpr Field ae_by_maf_signal{ignition_flags, 0x80};

/// Where the calculations of a log look in the dataset that came with it. The map above has the load of the
/// ignition table and the ignition modes elsewhere; which of the two the boxes that made old logs meant is
/// open. A tune as reset reads the same by both.
constexpr Field log_boost_input{load_base, 0x03};
constexpr Field log_ignition_mode{boost_i, 0x0F};

/// Sync flag of analog input 1 to 4, @p index 0 to 3.
constexpr Field Analog_Sync(int index) { return {analog_sync, static_cast<std::uint8_t>(1U << index)}; }

}  // namespace kx::map
