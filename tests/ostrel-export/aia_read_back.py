"""Writes the AIA files of real runs with ostrel-export and reads them back with netCDF4: every
pair bit for bit, the peak table from the marks, the template's required attributes."""
import json, subprocess, sys, tempfile
from pathlib import Path

try:
    import netCDF4
    import numpy as np
except ImportError:
    print("python3-netcdf4 is not installed")
    sys.exit(77)

export, make_runs = sys.argv[1:3]
REQUIRED = ["dataset_completeness", "aia_template_revision", "netcdf_revision", "languages",
            "dataset_origin", "dataset_date_time_stamp", "injection_date_time_stamp",
            "experiment_title", "sample_name", "administrative_comments",
            "detection_method_comments", "detector_name", "detector_unit",
            "raw_data_table_name", "retention_unit"]

with tempfile.TemporaryDirectory() as tmp:
    subprocess.run([make_runs, tmp], check=True)
    run = json.loads(subprocess.run([export, "--json", f"{tmp}/run.chd"], check=True,
                                    capture_output=True).stdout)
    pairs = np.fromfile(f"{tmp}/run.pairs", dtype="<f4").reshape(-1, 2).view("<u4")
    for source, marks, count in (("run.chd", run["marks"], 3000), ("run.chl", run["marks"], 3000),
                                 ("bare.chd", [], 10)):
        prefix = f"{tmp}/{Path(source).stem}-{Path(source).suffix[1:]}"
        subprocess.run([export, "--aia", "--injection-date", "2024-03-01T09:30:00+01:00",
                        f"{tmp}/{source}", prefix], check=True)
        for column, (trace, unit) in enumerate((("uv", "AU"), ("conductivity", "mS/cm"))):
            with netCDF4.Dataset(f"{prefix}-{trace}.cdf") as cdf:
                cdf.set_auto_mask(False)
                assert cdf.file_format == "NETCDF3_CLASSIC", cdf.file_format
                missing = [name for name in REQUIRED if name not in cdf.ncattrs()]
                assert not missing, f"{source} {trace}: no {missing}"
                assert (cdf.detector_unit, cdf.dataset_completeness) == (unit, "C1+C2")
                assert cdf.injection_date_time_stamp == "20240301093000+0100"
                assert cdf.experiment_title == (run["title"] if marks else "")
                ordinates = cdf["ordinate_values"][:]
                assert ordinates.dtype == np.float32
                assert np.array_equal(ordinates.astype("<f4").view("<u4"), pairs[:count, column])
                assert cdf["actual_sampling_interval"][...] == np.float32(0.2)
                times = [np.float32(mark["time"]) * np.float32(60) for mark in marks]
                assert list(cdf["peak_retention_time"][:]) == times
                names = [bytes(row).rstrip(b"\0").decode() for row in cdf["peak_name"][:]]
                assert names == [mark["label"] for mark in marks], names

    refused = [[f"{tmp}/run.chd", "-"], ["--injection-date", "1 March", f"{tmp}/run.chd", "p"]]
    for arguments in refused:
        assert subprocess.run([export, "--aia", *arguments], capture_output=True).returncode == 2
print("AIA files of 3 runs read back")
