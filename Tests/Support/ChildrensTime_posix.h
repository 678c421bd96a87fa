#pragma once

/// The processor time that all ended children had until now, in seconds.
double ChildrensTime();
