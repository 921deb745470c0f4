#!/usr/bin/env bash
# Makes the Debian packages, installs them into a clean root made by debootstrap, and uses each there. Needs root.
#   tools/check_packages.sh [PACKAGE_FOLDER]     where the packages go; build/packages when not given
set -euo pipefail
cd "$(dirname "$0")/.."
tools/install_packages.sh clean-root
folder=${1:-build/packages}

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
mkdir "$root/packages"
cp "$folder"/*.deb "$root/packages/"
cp examples/data/breast_cancer.csv tests/package/consumer.cpp "$root/packages/"

inside() { chroot "$root" sh -euc "$1"; }
inside 'apt-get update -qq; cd /packages; DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends ./*.deb >/dev/null'
inside 'vexroc auc /packages/breast_cancer.csv --state diagnosis=malignant --test radius_mean'
inside 'python3 -c "import vexroc; print(vexroc.auc([0, 0, 1, 1], [1, 3, 2, 4]))"'
inside 'DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends g++ pkgconf >/dev/null
    cd /packages; g++ -std=c++20 consumer.cpp $(pkg-config --cflags --libs vexrocproc) -o consumer; ./consumer'
inside 'test -f /usr/share/man/man1/vexroc.1 -a -f /usr/share/bash-completion/completions/vexroc'
echo "The packages install and run in a clean root."
