from hypothesis import HealthCheck, settings

# The same examples on every machine, however slow, and nothing left in the tree.
settings.register_profile("orvex", deadline=None, derandomize=True, max_examples=60, database=None,
                          suppress_health_check=[HealthCheck.too_slow])
settings.load_profile("orvex")
