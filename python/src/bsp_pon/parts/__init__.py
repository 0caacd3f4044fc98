"""What an OLT is made of for those who run it: its profiles, its forwarding, its modules, and so on."""

from .chip import Chip
from .configuration import Configuration, Configurations, Difference, Setting, differences
from .fdb import Fdb
from .loop_detection import LoopDetection
from .modules import Modules
from .p2p import P2p
from .profiles import Profiles
from .upgrades import Upgrades

__all__ = [
    "Chip", "Configuration", "Configurations", "Difference", "Fdb", "LoopDetection", "Modules", "P2p", "Profiles",
    "Setting", "Upgrades", "differences",
]
