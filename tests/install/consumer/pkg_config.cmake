find_package(PkgConfig REQUIRED)
pkg_check_modules(brackwell REQUIRED IMPORTED_TARGET brackwell=${BRACKWELL_VERSION})
set(brackwell PkgConfig::brackwell)
