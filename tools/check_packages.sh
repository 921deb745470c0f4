#!/usr/bin/env bash
# Makes the Debian packages, installs them into a clean root made by debootstrap, and uses each there; then does what
# the README says of R and Python there, word for word. Needs root.
#   tools/check_packages.sh [PACKAGE_FOLDER]     where the packages go; build/packages of the repository when not given
set -euo pipefail
folder=${1:+$(realpath -m "$1")}
cd "$(dirname "$0")/.."
folder=${folder:-$PWD/build/packages}
tools/install_packages.sh clean-root
tools/make_packages.sh "$folder"

root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
. /etc/os-release
mirror=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' | head -n 1)
debootstrap --variant=minbase "$VERSION_CODENAME" "$root" "$mirror" >/dev/null
# The root reaches packages the way this machine does.
rm -rf "$root/etc/apt"
cp -r /etc/apt "$root/etc/apt"
cp /etc/resolv.conf "$root/etc/resolv.conf"
mkdir "$root/packages" "$root/vexroc"
for name in libvexrocproc920r-0 libvexrocproc920r-dev vexroc python3-vexroc; do
    cp "$folder/${name}"_*.deb "$root/packages/"
done
cp examples/data/breast_cancer.csv tests/package/consumer.cpp "$root/packages/"
tar --create --exclude=./build --exclude=./.git . | tar --extract --directory="$root/vexroc"

inside() { chroot "$root" bash -euc "export DEBIAN_FRONTEND=noninteractive; cd /vexroc; $1"; }
# The commands of a row of the README's table.
row() { awk -F'|' -v name=" $1 " '$2 == name {print $3}' README.md | grep -o '`[^`]*`' | tr -d '`'; }
inside 'apt-get update -qq; cd /packages; apt-get install -y -qq --no-install-recommends ./*.deb >/dev/null'
inside 'vexroc auc /packages/breast_cancer.csv --state diagnosis=malignant --test radius_mean'
inside 'test -f /usr/share/man/man1/vexroc.1 -a -f /usr/share/bash-completion/completions/vexroc'
inside 'for package in /packages/*.deb; do
        name=${package##*/}; grep -q Apache-2.0 "/usr/share/doc/${name%%_*}/copyright"; done'
inside 'python3 -c "import vexroc; print(vexroc.auc([0, 0, 1, 1], [1, 3, 2, 4]))"'

inside "$(row R)"
inside 'Rscript -e "library(vexroc); vexroc(1:4, c(0, 1, 0, 1))"'
inside "$(row Python)"
inside 'env/bin/python -c "import vexroc; print(vexroc.__file__)" | grep env/'
# Last, to see that nothing above needed what this brings.
inside 'apt-get install -y -qq --no-install-recommends g++ pkgconf >/dev/null
    cd /packages; g++ -std=c++20 consumer.cpp $(pkg-config --cflags --libs vexrocproc) -o consumer; ./consumer'
echo "The packages install and run in a clean root, and the README's rows for R and Python hold there."
