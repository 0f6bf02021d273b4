# Debian packages by what needs them. Sourced by tools/setup.
packages_build="g++ cmake ninja-build make libsqlite3-dev qt6-base-dev qt6-declarative-dev qt6-svg-dev
    nlohmann-json3-dev libcli11-dev unixodbc-dev"
packages_run="qt6-qpa-plugins qt6-translations-l10n libqt6svg6 fonts-dejavu-core tdsodbc"
packages_test="libgtest-dev libgmock-dev librapidcheck-dev binutils postgresql odbc-postgresql
    qt6-base-private-dev"
packages_check="git ccache clang-format-14 clang-tidy-14 g++-mingw-w64-x86-64-posix"
packages_fuzz="clang-14 libclang-rt-14-dev"
packages_bench="libbenchmark-dev valgrind"
