# What the scripts of this folder go by, sourced in the project's folder: the version, and the date of all files, which is that of the
# last commit where SOURCE_DATE_EPOCH does not say another.
version=$(sed -n 's/^project(KRVWinPr VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
