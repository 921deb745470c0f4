"""Marks the wheel for its platform: it holds no module of one Python version, but shared libraries."""
from setuptools import Distribution, setup
from wheel.bdist_wheel import bdist_wheel


class PlatformDistribution(Distribution):
    def has_ext_modules(self):
        return True


class PlatformWheel(bdist_wheel):
    def get_tag(self):
        return "py3", "none", super().get_tag()[2]


setup(distclass=PlatformDistribution, cmdclass={"bdist_wheel": PlatformWheel})
