"""Which preset goes where: the products as folders, copies of all kinds, and what is no pose."""

FEMALE, MALE = "Genesis 8 Female", "Genesis 8 Male"

# Product: the files of poses it takes from.
PRODUCTS = {
    FEMALE: {
        "Everyday Stands": "standing",
        "City Walk": "moving",
        "Chairs and Floors": "seated",
        "Kneel and Crawl": "kneeling",
        "Rest and Sleep": "lying sides",
        "World Upside Down": "upside_down",
        "Dojo": "fighting",
        "Dance Floor": "dancing",
    },
    MALE: {
        "Standing Around": "standing",
        "On the Run": "moving",
        "Have a Seat": "seated",
        "Down to Earth": "kneeling",
        "Good Night": "lying sides",
        "Acrobat": "upside_down",
        "Arena": "fighting",
        "Night Out": "dancing",
    },
}

# Poses of men alone; all others are women's.
MEN_ONLY = {
    "Leaning against the wall", "Lifting a heavy box", "Saluting", "Pushing a stuck door",
    "Pulling the rope", "Standing at attention",
    "Stroll, hands in the pockets", "Sprint start", "Climbing a ladder",
    "Ankle on the knee", "Elbows on the knees", "Slouching", "Astride a chair, arms on the back",
    "Sit on the steps",
    "The proposal", "Half kneeling archer", "Kneeling, arms thrown up",
    "Sit-up", "Fainted", "Crawling under the wire", "Flying hero", "Fallen on the left side",
    "Recovery position",
    "One-handed stand", "Somersault, tucked",
    "Cross punch", "Uppercut", "Throwing the spear", "Shield and crouch", "Staggering back",
    "Tango lead", "Street dance, low", "Robot",
}

# Poses that both have.
ALSO_MEN = {
    "Arms crossed", "Thinking it over", "Waving hello", "Pointing the way", "Looking at the watch",
    "Shading the eyes", "Picking up a coin",
    "Walk 1 contact", "Walk 2 down", "Walk 3 passing", "Walk 4 up", "Running, push off",
    "Running, in the air", "Running, landing", "Jumping for joy", "Climbing the stairs",
    "Sit back, legs crossed", "Typing at the desk", "Raising a glass", "Asleep on a chair",
    "Campfire seat", "Leaning back on the hands",
    "Tying a shoe", "All fours", "Catching a breath",
    "Cloud watching", "Asleep, one arm up", "Reading on the back", "Pointing at the stars",
    "On the belly, asleep",
    "Swimming, crawl stroke", "Plank", "On the left side, asleep", "Leg lift, left side down",
    "Propped on the left elbow", "On the right side, asleep", "Propped on the right elbow",
    "Watching a film on the right side",
    "Handstand split", "Stag handstand", "Cartwheel", "Falling head first",
    "Boxing guard", "Jab", "High kick", "Low block", "Warrior lunge", "Sword at the ready",
    "Fencing lunge", "Disco point", "Swing kick",
}

# Copies within a product, by figure: left and right exchanged, and a little different.
MIRRORED = {
    FEMALE: ["Relaxed contrapposto", "One hand on the hip", "Waving hello", "Pointing the way",
             "Walk 1 contact", "Running, push off", "Sit back, legs crossed", "Side saddle",
             "Catching a breath", "Cloud watching", "High kick", "Disco point", "Arabesque"],
    MALE: ["Thinking it over", "Walk 4 up", "Ankle on the knee", "Cross punch", "Fencing lunge"],
}
VARIED = {  # none that leans on its hands
    FEMALE: ["Hands on hips", "Arms crossed", "Walk 3 passing", "Sit cross-legged",
             "Raising a glass", "Sit on the heels", "Skydiver", "Diving in", "Falling head first",
             "Boxing guard", "Curtsy"],
    MALE: ["Standing at attention", "Running, landing", "Slouching", "Flying hero"],
}

# Written uncompressed; few, as each is as large as twenty others.
PLAIN = {
    ("Everyday Stands", "Hands on hips"), ("City Walk", "Star jump"),
    ("Rest and Sleep", "Snow angel"), ("Dance Floor", "Grand jeté"),
    ("Standing Around", "Saluting"), ("Arena", "Jab"),
}

# With the scale channels as well, ten a bone.
WITH_SCALE = {
    ("Everyday Stands", "Hands on hips"), ("Chairs and Floors", "Sit cross-legged"),
    ("Arena", "Uppercut"), ("Good Night", "Plank"),
}

# Copies, byte by byte once unpacked: product, figure, name, and whether plain.
SAMPLER = "Free Sampler"
COPIES = [
    ("Everyday Stands", FEMALE, "Waving hello", False),
    ("City Walk", FEMALE, "Jumping for joy", False),
    ("Chairs and Floors", FEMALE, "Sit cross-legged", False),
    ("Rest and Sleep", FEMALE, "Cloud watching", False),
    ("Dojo", FEMALE, "Warrior lunge", True),
    ("Dance Floor", FEMALE, "Arabesque", False),
    ("Arena", MALE, "Uppercut", False),
    ("On the Run", MALE, "Climbing a ladder", False),
]

# The maker's own pose files: number of the product, file, pose.
PAIR_FILES = [
    ("001", "001f0", "Pair: first dance, she"), ("001", "001m0", "Pair: first dance, he"),
    ("001", "002f0", "Pair: the dip, she"), ("001", "002m0", "Pair: the dip, he"),
    ("002", "001fa", "Pair: bench, leaning on her"),
    ("002", "001fb", "Pair: bench, arm around her"),
    ("002", "002fa", "Pair: bench, whispering"), ("002", "002fb", "Pair: bench, laughing with her"),
    ("003", "001f1", "Single: Sunday morning, coffee in bed"),
    ("003", "002m1", "Single: Sunday morning, yawn"),
    ("003", "003f1", "Single: Sunday morning, one more minute"),
    ("005", "001ma", "Pair: sparring, the throw"),
    ("005", "001mb", "Pair: sparring, ducking under"),
    ("005", "002ma", "Pair: sparring, southpaw"), ("005", "002mb", "Pair: sparring, hook"),
]
# Of these there are variants with the words that the scan leaves out.
PAIR_MIRRORED = ["001f0", "001m0", "001fa", "001fb"]
PAIR_NO_EXPRESSION = ["001f0", "002m0"]

# Folders in which the content library shows the pairs.
PAIR_FOLDERS = {
    "001": ("First Dance", "FD01"), "002": ("Bench for Two", "BT02"),
    "003": ("Sunday Morning", "SM03"), "005": ("Sparring Partners", "SP05"),
}

# Poses with no mark of a woman or a man, from before there were products.
OLD = "Old Favourites"
OLD_POSES = [("On the toes, arms in a ring", "Ring.duf"), ("Sphinx", "SPHINX.DUF")]
