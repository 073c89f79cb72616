# One target carries the project's compile settings; every target links it.
add_library(quillon_settings INTERFACE)
target_compile_features(quillon_settings INTERFACE cxx_std_20)
target_compile_definitions(quillon_settings INTERFACE
  QT_NO_CAST_FROM_ASCII
  QT_DISABLE_DEPRECATED_UP_TO=0x060000)
target_compile_options(quillon_settings INTERFACE -Wall -Wextra -Wno-unused-parameter)
if(QUILLON_WERROR)
  target_compile_options(quillon_settings INTERFACE -Werror)
endif()
